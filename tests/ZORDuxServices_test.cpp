#include "ZORDuxServices.h"

#include "CapturedOutput.h"
#include "CreateServices.h"
#include "LifeCycleObject.h"
#include "RaisedBy.h"
#include "SettingsSite.h"
#include "SupportedClasses.h"
#include "TraceLines.h"
#include "VirtualTable.h"
#include "ZORDictionary.h"
#include "ZORDuxServicesMsg.h"
#include "ZORMetaClass.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

using ::testing::ElementsAre;

// The entries of the table after those that every component has.
std::vector<std::string> OwnEntries(const ZORBaseUnknown& iObject, std::size_t iCount)
{
    constexpr std::size_t kInherited = 12;
    const std::vector<std::string> table = VirtualTable(&iObject, kInherited + iCount);
    return {table.begin() + kInherited, table.end()};
}

} // namespace

TEST(ZORDuxServices, HasTheIdentityOfItsClass)
{
    ZORMetaClass* const meta = ZORDuxServices::MetaObject();
    EXPECT_EQ(ZORDuxServices::MetaObject(), meta);
    EXPECT_EQ(QueryMetaObject("ZORDuxServices"), meta);
    EXPECT_STREQ(ZORDuxServices::ClassName(), "ZORDuxServices");
    EXPECT_TRUE(meta->HasClassId());
    EXPECT_EQ(ZORDuxServices::ClassId(), meta->GetClassId());
    EXPECT_EQ(QueryMetaObject(ZORDuxServices::ClassId()), meta);
    EXPECT_EQ(meta->GetKind(), ZORKindImplementation);
    EXPECT_EQ(meta->GetParent(), ZORBaseUnknown::MetaObject());

    ZORDuxServices services;
    EXPECT_EQ(services.GetMetaObject(), meta);
    EXPECT_STREQ(services.IsA(), "ZORDuxServices");
    EXPECT_EQ(services.IsAKindOf("ZORDuxServices"), 1);
    EXPECT_EQ(services.IsAKindOf("ZORBaseUnknown"), 1);
    EXPECT_EQ(services.IsAKindOf("ZORIDuxServices"), 0);
}

TEST(ZORDuxServices, CannotBeMadeByTheDictionary)
{
    EXPECT_EQ(ZORDuxServices::CreateItself(), nullptr);
}

TEST(ZORDuxServices, IsInTheDictionaryFromLoadOn)
{
    EXPECT_THAT(Supported("LifeCycleObject"), ElementsAre("ZORDuxServices"));
    EXPECT_THAT(Supported("ZORIDuxServices"), ElementsAre("ZORDuxServices"));
}

TEST(ZORDuxServices, HasNoVirtualOperationsButThoseOfEveryComponent)
{
    ZORDuxServices services;
    EXPECT_THAT(VirtualTable(&services, 12),
                ElementsAre("ZORBaseUnknown::QueryInterface(GUID const&, void**)",
                            "ZORBaseUnknown::AddRef()", "ZORBaseUnknown::Release()",
                            "ZORDuxServices::~ZORDuxServices()",
                            "ZORDuxServices::~ZORDuxServices()",
                            "ZORDuxServices::GetMetaObject() const", "ZORDuxServices::IsA() const",
                            "ZORDuxServices::IsAKindOf(char const*) const",
                            "ZORBaseUnknown::IsNull() const",
                            "ZORBaseUnknown::IsEqual(ZORBaseUnknown const*) const",
                            "ZORBaseUnknown::SetImpl(ZORBaseUnknown*)",
                            "ZORBaseUnknown::QueryInterface(char const*) const"));
}

TEST(ZORDuxServices, HasItsOperationsOutsideTheTable)
{
    constexpr auto kNoSlot = static_cast<std::size_t>(-1);
    EXPECT_EQ(SlotOf(&ZORDuxServices::SeekFile), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::CheckFile), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::LoadSchema), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::GetSettingSeparator), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::PutSettingSeparator), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::GetSetting), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::PutSetting), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::RemoveSetting), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::ListOfSettingVariables), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::SearchPath), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::SeekPath), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::GetEnv), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::GetOctetIdentifier), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::GetIdentifier), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::GetDynamicObjList), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::CreateSimpleContainer), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::WriteStream), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::ReadStream), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::SeekEnv), kNoSlot);
    EXPECT_EQ(SlotOf(&ZORDuxServices::remove), kNoSlot);
}

TEST(ZORDuxServices, SurvivesATraceThatRaisesWhileItGoes)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    ZORIDuxServices_var services = CreateServices();
    lines.onLine = [](const std::string&) { throw 1; };
    services = nullptr;
    lines.onLine = nullptr;
    EXPECT_EQ(lines.Taken().back(), "> ZORDuxServices::~ZORDuxServices");
}

TEST(ZORDuxServices, BeginsWithAColonAsSeparator)
{
    EXPECT_EQ(ZORDuxServices().GetSettingSeparator(), ":");
}

TEST(ZORDuxServices, ACopyHasAnEmptySeparator)
{
    ZORDuxServices source;
    source.PutSettingSeparator(";");
    ZORDuxServices copy(source);
    EXPECT_EQ(copy.GetSettingSeparator(), "");
    EXPECT_EQ(source.GetSettingSeparator(), ";");
}

TEST(ZORDuxServices, AssignmentCopiesNothing)
{
    ZORDuxServices source;
    source.PutSettingSeparator(";");
    ZORDuxServices target;
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.GetSettingSeparator(), ":");
}

TEST(ZORDuxServices, RemoveEndsNothing)
{
    ZORIDuxServices_var services = CreateServices();
    const LifeCycleObject_var life(services);
    ASSERT_TRUE(life);
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    life->remove();
    EXPECT_THAT(lines.Taken(), ElementsAre("> ZORDuxServices::remove", "< ZORDuxServices::remove"));
    services->PutSettingSeparator(";");
    EXPECT_EQ(services->GetSettingSeparator(), ";");
}

TEST(ZORDuxServices, TracesItsOwnLife)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    {
        ZORDuxServices services;
        ZORDuxServices copy(services);
        copy = services;
        copy.remove();
    }
    EXPECT_THAT(
        lines.Taken(),
        ElementsAre("> ZORDuxServices::ZORDuxServices", "< ZORDuxServices::ZORDuxServices",
                    "> ZORDuxServices::ZORDuxServices (ZORDuxServices)",
                    "< ZORDuxServices::ZORDuxServices (ZORDuxServices)",
                    "> ZORDuxServices::operator=", "< ZORDuxServices::operator=",
                    "> ZORDuxServices::remove", "< ZORDuxServices::remove",
                    "> ZORDuxServices::~ZORDuxServices", "< ZORDuxServices::~ZORDuxServices",
                    "> ZORDuxServices::~ZORDuxServices", "< ZORDuxServices::~ZORDuxServices"));
}

TEST(ZORIDuxServices, KeepsTheOrderOfItsOperations)
{
    EXPECT_EQ(SlotOf(&ZORIDuxServices::SeekFile), 12U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::CheckFile), 13U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::LoadSchema), 14U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::GetSettingSeparator), 15U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::PutSettingSeparator), 16U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::GetSetting), 17U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::PutSetting), 18U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::RemoveSetting), 19U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::ListOfSettingVariables), 20U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::SearchPath), 21U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::SeekPath), 22U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::GetEnv), 23U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::GetOctetIdentifier), 24U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::GetIdentifier), 25U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::GetDynamicObjList), 26U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::CreateSimpleContainer), 27U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::WriteStream), 28U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::ReadStream), 29U);
    EXPECT_EQ(SlotOf(&ZORIDuxServices::SeekEnv), 30U);
}

TEST(ZORIDuxServices, IsAnInterface)
{
    EXPECT_STREQ(ZORIDuxServices::ClassName(), "ZORIDuxServices");
    EXPECT_EQ(ZORIDuxServices::MetaObject()->GetKind(), ZORKindInterface);
    EXPECT_EQ(ZORIDuxServices::MetaObject()->GetParent(), ZORBaseUnknown::MetaObject());
}

TEST(TIEZORIDuxServicesZORDuxServices, StandsForTheServicesObject)
{
    const ZORIDuxServices_var services = CreateServices();
    const ZORMetaClass* const meta = services->GetMetaObject();
    EXPECT_STREQ(meta->GetClassName(), "ZORIDuxServices");
    EXPECT_EQ(meta->GetParent(), ZORIDuxServices::MetaObject());
    EXPECT_EQ(meta->GetImplementation(), ZORDuxServices::MetaObject());
    EXPECT_EQ(meta->GetKind(), 7);
}

TEST(TIEZORIDuxServicesZORDuxServices, KeepsTheOrderOfItsOperations)
{
    const std::string text = "(ZORUnicodeString const&)";
    const std::string twoTexts = "(ZORUnicodeString const&, ZORUnicodeString const&)";
    const std::vector<std::string> operations = {
        "SeekFile" + twoTexts,
        "CheckFile" + text,
        "LoadSchema" + text,
        "GetSettingSeparator()",
        "PutSettingSeparator" + text,
        "GetSetting" + twoTexts,
        "PutSetting(ZORUnicodeString const&, ZORUnicodeString const&, ZORUnicodeString const&)",
        "RemoveSetting" + twoTexts,
        "ListOfSettingVariables" + text,
        "SearchPath" + text,
        "SeekPath" + text,
        "GetEnv" + text,
        "GetOctetIdentifier()",
        "GetIdentifier()",
        "GetDynamicObjList" + text,
        "CreateSimpleContainer" + twoTexts,
        "WriteStream(ZORListValZORUnicodeString const&, ZORUnicodeString const&)",
        "ReadStream" + text,
        "SeekEnv" + text,
    };
    const ZORIDuxServices_var services = CreateServices();
    const std::vector<std::string> entries = OwnEntries(*services, operations.size());
    for (std::size_t i = 0; i < operations.size(); ++i)
        EXPECT_EQ(entries[i], "TIEZORIDuxServicesZORDuxServices::" + operations[i]);
}

TEST(TIEZORIDuxServicesZORDuxServices, ForwardsEachCallWithItsArguments)
{
    const SettingsSite site;
    const std::string file = site.Directory() / "lines";
    const ZORIDuxServices_var services = CreateServices();
    ZORListValZORUnicodeString list;
    list.Append("a\n");
    TraceLines lines;
    const auto first = [&lines](std::size_t iCount) {
        std::vector<std::string> taken = lines.Taken();
        taken.resize(std::min(taken.size(), iCount));
        return taken;
    };

    EXPECT_EQ(services->SeekFile("tmp", "/none:/"), "//tmp");
    EXPECT_THAT(first(2), ElementsAre("   ZORDuxServices::SeekFile iFileName = tmp",
                                      "   ZORDuxServices::SeekFile iPath = /none:/"));
    EXPECT_EQ(services->CheckFile("/tmp").exists, 1);
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::CheckFile iFullPath = /tmp"));
    {
        const CapturedOutput output(STDERR_FILENO);
        RaisedBy([&] { services->LoadSchema("NoSuchSchema"); });
    }
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::LoadSchema iSchemaName = NoSuchSchema"));
    services->PutSettingSeparator(";:");
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::PutSettingSeparator iSeparator = ;:"));
    EXPECT_EQ(services->GetSettingSeparator(), ";:");
    EXPECT_THAT(first(1),
                ElementsAre("   ZORDuxServices::GetSettingSeparator _TheSettingSeparator = ;:"));
    services->PutSetting("A", "1", "f");
    EXPECT_THAT(first(3), ElementsAre("   ZORDuxServices::PutSetting iSettingName = A",
                                      "   ZORDuxServices::PutSetting iSettingValue = 1",
                                      "   ZORDuxServices::PutSetting iFileName = f"));
    EXPECT_EQ(services->GetSetting("A", "f"), "1");
    EXPECT_THAT(first(2), ElementsAre("   ZORDuxServices::GetSetting iVariableName = A",
                                      "   ZORDuxServices::GetSetting iFileName = f"));
    EXPECT_EQ(services->ListOfSettingVariables("f").Size(), 1);
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::ListOfSettingVariables iFileName = f"));
    services->RemoveSetting("A", "f");
    EXPECT_THAT(first(2), ElementsAre("   ZORDuxServices::RemoveSetting iSettingName = A",
                                      "   ZORDuxServices::RemoveSetting iFileName = f"));
    EXPECT_EQ(services->GetSetting("A", "f"), "");
    lines.Taken();
    EXPECT_EQ(services->SearchPath("/none/tmp"), "");
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::SearchPath iFileName = /none/tmp"));
    EXPECT_EQ(services->SeekPath("/a;/b").Size(), 2);
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::SeekPath iFullPath = /a;/b"));
    services->GetEnv("PATH");
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::GetEnv iEnvType = PATH"));
    EXPECT_EQ(services->GetOctetIdentifier().length(), 36);
    EXPECT_EQ(services->GetIdentifier().GetLengthInChar(), 36);
    lines.Taken();
    EXPECT_EQ(services->GetDynamicObjList("LifeCycleObject").Size(), 1);
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::GetDynamicObjList iInterfaceName = "
                                      "LifeCycleObject"));
    EXPECT_TRUE(services->CreateSimpleContainer("type", "schema"));
    EXPECT_THAT(first(2),
                ElementsAre("   ZORDuxServices::CreateSimpleContainer iModelType = type",
                            "   ZORDuxServices::CreateSimpleContainer iTheSchemaName = schema"));
    EXPECT_EQ(services->WriteStream(list, file.c_str()), 1);
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::WriteStream iFileName = " + file));
    EXPECT_EQ(services->ReadStream(file.c_str()).Size(), 1);
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::ReadStream iFileName = " + file));
    EXPECT_EQ(services->SeekEnv("/plain"), "/plain");
    EXPECT_THAT(first(1), ElementsAre("   ZORDuxServices::SeekEnv iPath = /plain"));
}

TEST(TIELifeCycleObjectZORDuxServices, StandsForTheServicesObject)
{
    const LifeCycleObject_var life(CreateServices());
    const ZORMetaClass* const meta = life->GetMetaObject();
    EXPECT_STREQ(meta->GetClassName(), "LifeCycleObject");
    EXPECT_EQ(meta->GetParent(), LifeCycleObject::MetaObject());
    EXPECT_EQ(meta->GetImplementation(), ZORDuxServices::MetaObject());
    EXPECT_EQ(meta->GetKind(), 5);
    EXPECT_EQ(SlotOf(&LifeCycleObject::remove), 12U);
    EXPECT_THAT(OwnEntries(*life, 1), ElementsAre("TIELifeCycleObjectZORDuxServices::remove()"));
}

TEST(CreateServices, GivesAHandleThatIsTheOnlyOwner)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    ZORIDuxServices_var services = CreateServices();
    ASSERT_TRUE(services);
    EXPECT_THAT(lines.Taken(), ElementsAre("> ZORDuxServices::ZORDuxServices",
                                           "< ZORDuxServices::ZORDuxServices"));
    services = nullptr;
    EXPECT_THAT(lines.Taken(), ElementsAre("> ZORDuxServices::~ZORDuxServices",
                                           "< ZORDuxServices::~ZORDuxServices"));
}

TEST(CreateServices, MakesAnotherObjectEachTime)
{
    EXPECT_TRUE(CreateServices() != CreateServices());
}

TEST(CreateServices, RaisesWhenTheInterfaceIsNotToBeHadAndReleasesTheObject)
{
    ASSERT_EQ(RemoveDictionary("ZORDuxServices", "ZORIDuxServices"), 1);
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    const CapturedOutput output(STDERR_FILENO);
    const ZORHandle<ZORError> error = RaisedBy([] { CreateServices(); });
    EXPECT_STREQ(error->IsA(), "ZORDuxServicesMsg");
    EXPECT_EQ(error->GetId(), 0x20002U);
    EXPECT_STREQ(error->GetParameter(1), "ZORDuxServices");
    EXPECT_STREQ(error->GetParameter(2), "ZORIDuxServices");
    EXPECT_STREQ(error->GetFile(), "VirtualServices/KW4TOOLS.m/src/CreateServices");
    EXPECT_EQ(error->GetLine(), 41);
    EXPECT_EQ(
        output.Text(),
        "ZORDuxServicesMsg raised in VirtualServices/KW4TOOLS.m/src/CreateServices, line 41\n");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("> ZORDuxServices::ZORDuxServices", "< ZORDuxServices::ZORDuxServices",
                            "> ZORDuxServices::~ZORDuxServices",
                            "< ZORDuxServices::~ZORDuxServices"));
}
