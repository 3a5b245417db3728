#include "ZORLoadExternalSchema.h"

#include "CapturedOutput.h"
#include "RaisedBy.h"
#include "SchemaSite.h"
#include "TraceLines.h"
#include "ZORDuxServicesMsg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace
{

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string kGood = KW_SCHEMA_GOOD;
const std::string kWithoutCreation = KW_SCHEMA_WITHOUT_CREATION;
const std::string kDependent = KW_SCHEMA_DEPENDENT;

const char kFile[] = "VirtualServices/KW4TOOLS.m/src/ZORLoadExternalSchema";

// Loads and expects the error; returns what was written to standard error.
std::string Refused(const char* iSchema, const char* iPath, unsigned int iId, int iLine,
                    const std::string& iFirst, const char* iSecond = nullptr)
{
    const CapturedOutput output(STDERR_FILENO);
    const auto error = RaisedBy([&] { ZORLoadExternalSchema(iSchema, iPath); });
    if (!error)
        return output.Text();
    EXPECT_EQ(error->IsAKindOf("ZORDuxServicesMsg"), 1);
    EXPECT_EQ(error->GetId(), iId);
    EXPECT_STREQ(error->GetFile(), kFile);
    EXPECT_EQ(error->GetLine(), iLine);
    EXPECT_EQ(error->GetParameter(1), iFirst);
    EXPECT_STREQ(error->GetParameter(2), iSecond);
    return output.Text();
}

} // namespace

TEST(ZORLoadExternalSchema, LoadsTheLibraryThatTheSearchFindsAndRunsItsCreation)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "b/libGood.so");
    void* const result = ZORLoadExternalSchema("Good", nullptr);
    EXPECT_EQ(result, &VariableOf<int>(path, "creations"));
    EXPECT_EQ(VariableOf<int>(path, "creations"), 1);
    EXPECT_EQ(ZORLoadExternalSchema("Good", nullptr), result);
    EXPECT_EQ(VariableOf<int>(path, "creations"), 2);
}

TEST(ZORLoadExternalSchema, TheFileInTheCurrentDirectoryGoesBeforeThePath)
{
    const SchemaSite site;
    const std::string here = site.Install(kGood, "here/libGood.so");
    const std::string there = site.Install(kGood, "a/libGood.so");
    EXPECT_NE(ZORLoadExternalSchema("Good", nullptr), nullptr);
    EXPECT_TRUE(SchemaSite::IsLoaded(here));
    EXPECT_FALSE(SchemaSite::IsLoaded(there));
}

TEST(ZORLoadExternalSchema, TakesAGivenPathAsItIs)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "elsewhere/odd.name");
    EXPECT_NE(ZORLoadExternalSchema("Good", path.c_str()), nullptr);
    EXPECT_TRUE(SchemaSite::IsLoaded(path));
}

TEST(ZORLoadExternalSchema, AGivenPathWithoutASlashMeansTheCurrentDirectory)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "here/bare.so");
    EXPECT_NE(ZORLoadExternalSchema("Good", "bare.so"), nullptr);
    EXPECT_TRUE(SchemaSite::IsLoaded(path));
}

TEST(ZORLoadExternalSchema, ALibraryThatIsNotFoundIsAnErrorAndNothingIsWritten)
{
    const SchemaSite site;
    EXPECT_EQ(Refused("Foo", nullptr, 0x20003, 120, "libFoo.so"), "");
    const ScopedEnvironment unset("LD_LIBRARY_PATH", std::nullopt);
    EXPECT_EQ(Refused("Foo", nullptr, 0x20003, 120, "libFoo.so"), "");
}

TEST(ZORLoadExternalSchema, ALibraryThatCannotBeOpenedIsToldWithTheLoadersText)
{
    const SchemaSite site;
    const std::string text = site.Write("a/libText.so", "this is no library\n");
    EXPECT_EQ(Refused("Text", nullptr, 0x20003, 205, text),
              "Can't open library -->" + text + "reason =" + text + ": file too short\n");
    const std::string longText = site.Write("a/libLong.so", std::string(4096, 'x'));
    EXPECT_EQ(Refused("Long", nullptr, 0x20003, 205, longText),
              "Can't open library -->" + longText + "reason =" + longText +
                  ": invalid ELF header\n");
}

TEST(ZORLoadExternalSchema, APathKeepsItsTextsAsChosenWhateverTheLoaderGets)
{
    const SchemaSite site;
    site.Write("here/libText.so", "this is no library\n");
    const std::string expected =
        "Can't open library -->libText.soreason =./libText.so: file too short\n";
    EXPECT_EQ(Refused("Text", nullptr, 0x20003, 205, "libText.so"), expected);
    EXPECT_EQ(Refused("Any", "libText.so", 0x20003, 205, "libText.so"), expected);
}

TEST(ZORLoadExternalSchema, WhatIsNoLoadableLibraryIsAnError)
{
    const SchemaSite site;
    std::filesystem::create_directory(site / "a/libDirectory.so");
    const std::string dependent = site.Install(kDependent, "a/libDependent.so");
    const std::string foreign = site.InstallForOtherMachine(kGood, "a/libGood.so");
    const std::string missing = site / "missing.so";
    const struct {
        const char* schema;
        std::string path;
        const char* given;
        const char* reason;
    } rows[] = {
        {"Directory", site / "a/libDirectory.so", nullptr, "cannot read file data"},
        {"Dependent", dependent, nullptr, "libSchemaDependency.so: cannot open shared object file"},
        {"Good", foreign, nullptr, "cannot open shared object file"},
        {"Any", missing, missing.c_str(), "cannot open shared object file"},
    };
    for (const auto& row : rows) {
        const std::string told = Refused(row.schema, row.given, 0x20003, 205, row.path);
        EXPECT_THAT(told, StartsWith("Can't open library -->" + row.path + "reason ="));
        EXPECT_THAT(told, HasSubstr(row.reason));
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1);
        EXPECT_FALSE(SchemaSite::IsLoaded(row.path));
    }
}

TEST(ZORLoadExternalSchema, AnEmptyPathIsTakenAsItIs)
{
    const SchemaSite site;
    EXPECT_THAT(Refused("Good", "", 0x20003, 205, ""),
                StartsWith("Can't open library -->reason ="));
}

TEST(ZORLoadExternalSchema, ALibraryWithoutItsCreationFunctionIsToldAndClosed)
{
    const SchemaSite site;
    const std::string path = site.Install(kWithoutCreation, "a/libFoo.so");
    EXPECT_EQ(Refused("Foo", nullptr, 0x20004, 262, path, "fctCreateFoo"),
              "Can't find symbol -->fctCreateFooreason =" + path +
                  ": undefined symbol: fctCreateFoo\n");
    EXPECT_FALSE(SchemaSite::IsLoaded(path));
}

// The loader finds such a symbol and has no reason to tell.
TEST(ZORLoadExternalSchema, ACreationFunctionAtTheNullAddressIsNone)
{
    const SchemaSite site;
    const std::string path = site.Install(kWithoutCreation, "a/libNull.so");
    EXPECT_EQ(Refused("Null", nullptr, 0x20004, 262, path, "fctCreateNull"),
              "Can't find symbol -->fctCreateNullreason =\n");
}

TEST(ZORLoadExternalSchema, ALibraryWhoseCreationRanIsNeverClosed)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "a/libGood.so");
    ZORLoadExternalSchema("Good", nullptr);
    Refused("Other", path.c_str(), 0x20004, 262, path, "fctCreateOther");
    EXPECT_TRUE(SchemaSite::IsLoaded(path));
}

TEST(ZORLoadExternalSchema, WhatTheCreationFunctionRaisesGoesOnAndTheLibraryStays)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "a/libGood.so");
    ZORLoadExternalSchema("Good", nullptr);
    auto*& onCreation = VariableOf<void (*)()>(path, "onCreation");
    const CapturedOutput output(STDERR_FILENO);

    onCreation = [] { throw std::bad_alloc(); };
    EXPECT_THROW(ZORLoadExternalSchema("Good", nullptr), std::bad_alloc);
    onCreation = [] { throw std::runtime_error("no schema today"); };
    EXPECT_THROW(ZORLoadExternalSchema("Good", nullptr), std::runtime_error);
    onCreation = [] { (new ZORInternalError)->Throw("SchemaGood", 3); };
    const auto error = RaisedBy([] { ZORLoadExternalSchema("Good", nullptr); });
    EXPECT_STREQ(error->GetFile(), "SchemaGood");

    EXPECT_EQ(output.Text(), "");
    EXPECT_EQ(VariableOf<int>(path, "creations"), 4);
}

TEST(ZORLoadExternalSchema, TakesAnyName)
{
    const SchemaSite site;
    const std::string slash = site.Install(kWithoutCreation, "a/libsub/Foo.so");
    Refused("sub/Foo", nullptr, 0x20004, 262, slash, "fctCreatesub/Foo");
    const std::string dots = site.Install(kWithoutCreation, "a/lib...so");
    Refused("..", nullptr, 0x20004, 262, dots, "fctCreate..");
    const std::string empty = site.Install(kWithoutCreation, "a/lib.so");
    Refused("", nullptr, 0x20004, 262, empty, "fctCreate");
    Refused(nullptr, nullptr, 0x20004, 262, empty, "fctCreate");
    Refused("../elsewhere/x", nullptr, 0x20003, 120, "lib../elsewhere/x.so");
    const std::string longName(10000, 'n');
    Refused(longName.c_str(), nullptr, 0x20003, 120, "lib" + longName + ".so");
    const std::string creation = "fctCreate" + longName;
    EXPECT_THAT(Refused(longName.c_str(), slash.c_str(), 0x20004, 262, slash, creation.c_str()),
                EndsWith("undefined symbol: " + creation + "\n"));
}

TEST(ZORLoadExternalSchema, WritesNoTrace)
{
    const SchemaSite site;
    site.Install(kGood, "a/libGood.so");
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    ZORLoadExternalSchema("Good", nullptr);
    EXPECT_THAT(lines.Taken(), IsEmpty());
}
