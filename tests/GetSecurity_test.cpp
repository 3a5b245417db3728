#include "GetSecurity.h"

#include "CapturedOutput.h"
#include "RaisedBy.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "TraceLines.h"
#include "ZORObject.h"
#include "ZORTie.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace
{

using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string kCompanion = KW_COMPANION;

// A dictionary with one entry for the security component.
class Dictionary : public ScopedDirectory
{
public:
    explicit Dictionary(const std::string& iCreator, const std::string& iLibrary = kCompanion)
        : _Path("ZOR_DICTIONARY_PATH", Path().string())
    {
        Write("security.toml", "[[adapter]]\nclass = \"DUXSecurity\"\n"
                               "interface = \"ZORIDuxSecurity\"\nlibrary = \"" +
                                   iLibrary + "\"\ncreator = \"" + iCreator + "\"\n");
    }

private:
    ScopedEnvironment _Path;
};

unsigned int CountOf(ZORBaseUnknown& ioObject)
{
    ioObject.AddRef();
    return ioObject.Release();
}

// Implements the component in the program itself, and counts its objects.
class Guard final : public ZORIDuxSecurity
{
    ZOR_DECLARE_CLASS
public:
    explicit Guard(ZORBaseUnknown* iObject)
    {
        TieConstructor(this, iObject, ZORObject::ClassId(), ZORIDuxSecurity::ClassId());
        ++alive;
    }
    ~Guard() override { --alive; }
    int IsAllowed(const ZORUnicodeString&, const ZORUnicodeString&,
                  const ZORUnicodeString&) override
    {
        return 1;
    }
    static int alive;
};
int Guard::alive = 0;
ZOR_IMPLEMENT_CLASS(Guard, ZORKindImplementation, ZORIDuxSecurity)

ZORBaseUnknown* CreateGuard(ZORBaseUnknown* iObject)
{
    return new Guard(iObject);
}

} // namespace

TEST(GetSecurity, GivesANullHandleAndSilenceWithoutAnImplementation)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    const CapturedOutput errors(STDERR_FILENO);
    const CapturedOutput output(STDOUT_FILENO);
    EXPECT_FALSE(GetSecurity());
    EXPECT_FALSE(GetSecurity());
    EXPECT_EQ(errors.Text(), "");
    EXPECT_EQ(output.Text(), "");
    EXPECT_THAT(lines.Taken(), IsEmpty());
}

TEST(GetSecurity, FindsAnImplementationThroughADictionaryFileAndLoadsItOnFirstUse)
{
    const Dictionary dictionary("CreateTIEZORIDuxSecurityTestGuard");
    EXPECT_EQ(dlopen(kCompanion.c_str(), RTLD_LAZY | RTLD_NOLOAD), nullptr);
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    const ZORIDuxSecurity_var security = GetSecurity();
    ASSERT_TRUE(security);
    EXPECT_EQ(security->IsAllowed("open", "open", "plate"), 1);
    EXPECT_EQ(security->IsAllowed("open", "delete", "plate"), 0);
    EXPECT_THAT(lines.Taken(), IsEmpty());
}

TEST(GetSecurity, EachCallMakesAnotherObjectOwnedByItsHandleAlone)
{
    const ZORFillDictionary entry("DUXSecurity", "ZORIDuxSecurity", CreateGuard);
    {
        const ZORIDuxSecurity_var first = GetSecurity();
        const ZORIDuxSecurity_var second = GetSecurity();
        ASSERT_TRUE(first && second);
        EXPECT_FALSE(first == second);
        EXPECT_EQ(CountOf(*first), 1U);
        EXPECT_EQ(CountOf(*second), 1U);
        const auto object = ZORBaseUnknown_var(first);
        EXPECT_STREQ(object->IsA(), "DUXSecurity");
        EXPECT_EQ(Guard::alive, 2);
    }
    EXPECT_EQ(Guard::alive, 0);
}

TEST(GetSecurity, MakesAnObjectOfTheClassDUXWhereThereIsOne)
{
    ZORRegisterClass("DUX", ZORKindImplementation, ZORObject::MetaObject());
    const ZORFillDictionary ofTheClass("DUX", "ZORIDuxSecurity", CreateGuard);
    const ZORIDuxSecurity_var security = GetSecurity();
    ASSERT_TRUE(security);
    EXPECT_STREQ(ZORBaseUnknown_var(security)->IsA(), "DUX");
}

TEST(GetSecurity, AnErrorOfTheFamilyIsToldAndGoesOn)
{
    const Dictionary dictionary("CreateRaising");
    const CapturedOutput errors(STDERR_FILENO);
    const auto error = RaisedBy([] { GetSecurity(); });
    EXPECT_STREQ(error->GetFile(), "Companion");
    EXPECT_EQ(error->GetLine(), 7);
    EXPECT_EQ(errors.Text(), "ZORInternalError (0x0) raised in Companion, line 7\n"
                             "ZORInternalError raised in Companion, line 7\n");
}

TEST(GetSecurity, AMessageOfTheServicesIsToldWithItsText)
{
    const Dictionary dictionary("CreateRaisingMessage");
    const CapturedOutput errors(STDERR_FILENO);
    const auto error = RaisedBy([] { GetSecurity(); });
    EXPECT_EQ(errors.Text(), std::string(error->GetMessage(1).ConvertToChar()) +
                                 "\nZORDuxServicesMsg raised in Companion, line 8\n");
}

TEST(GetSecurity, AnyOtherErrorGoesOnUntold)
{
    const Dictionary dictionary("CreateRaisingStranger");
    const CapturedOutput errors(STDERR_FILENO);
    EXPECT_EQ(RaisedBy([] { GetSecurity(); })->GetLine(), 9);
    EXPECT_EQ(errors.Text(), "");
}

TEST(GetSecurity, AnErrorWhoseThrowReturnsGivesANullHandle)
{
    const Dictionary dictionary("CreateRaisingReturning");
    const CapturedOutput errors(STDERR_FILENO);
    EXPECT_FALSE(GetSecurity());
}

TEST(GetSecurity, ALibraryThatCannotBeLoadedIsToldAndRaised)
{
    const Dictionary dictionary("CreateRaising", "/nowhere/libGuard.so");
    const CapturedOutput errors(STDERR_FILENO);
    const auto error = RaisedBy([] { GetSecurity(); });
    EXPECT_THAT(errors.Text(),
                StartsWith("ZORInternalError (0x0): " + (dictionary / "security.toml") +
                           ": line 1: cannot load the library: /nowhere/libGuard.so: cannot open "
                           "shared object file"));
    EXPECT_THAT(errors.Text(), ::testing::EndsWith("\n"));
}
