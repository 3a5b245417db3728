#include "ZORDuxServices.h"

#include "CapturedOutput.h"
#include "RaisedBy.h"
#include "SettingsSite.h"
#include "Texts.h"
#include "TraceLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const char kSource[] = "VirtualServices/KW4TOOLS.m/src/ZORDuxServices";

std::vector<std::string> NamesOf(const char* iFile)
{
    return Texts(ZORDuxServices().ListOfSettingVariables(iFile));
}

} // namespace

TEST(SettingSeparator, IsAColonUntilItIsChanged)
{
    ZORDuxServices services;
    EXPECT_EQ(services.GetSettingSeparator(), ":");
    services.PutSettingSeparator(";");
    EXPECT_EQ(services.GetSettingSeparator(), ";");
    services.PutSettingSeparator("");
    EXPECT_EQ(services.GetSettingSeparator(), "");
}

TEST(SettingSeparator, IsTraced)
{
    ZORDuxServices services;
    TraceLines lines;
    services.PutSettingSeparator(";");
    services.GetSettingSeparator();
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::PutSettingSeparator iSeparator = ;",
                            "   ZORDuxServices::GetSettingSeparator _TheSettingSeparator = ;"));
}

TEST(PutSetting, StoresWhatGetSettingGives)
{
    const SettingsSite site;
    ZORDuxServices services;
    services.PutSetting("A", "1", "f");
    EXPECT_EQ(services.GetSetting("A", "f"), "1");
    EXPECT_THAT(NamesOf("f"), ElementsAre("A"));
    services.PutSetting("A", "2", "f");
    EXPECT_EQ(services.GetSetting("A", "f"), "2");
    EXPECT_THAT(NamesOf("f"), ElementsAre("A"));
}

TEST(PutSetting, SavesAtOnce)
{
    const SettingsSite site;
    ZORDuxServices().PutSetting("A", "1", "f");
    EXPECT_EQ(site.Read("f"), "A = \"1\"\n");
}

TEST(PutSetting, TakesAnEmptyNameAndAnEmptyValue)
{
    const SettingsSite site;
    ZORDuxServices services;
    services.PutSetting("", "nameless", "f");
    services.PutSetting("B", "", "f");
    EXPECT_THAT(NamesOf("f"), ElementsAre("", "B"));
    EXPECT_EQ(services.GetSetting("B", "f"), "");
}

TEST(PutSetting, KeepsBytesOfAnyKind)
{
    const SettingsSite site;
    ZORDuxServices services;
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const std::string name = all.substr(0, 199);
    const std::string large(1'000'000, 'x');
    services.PutSetting(name.c_str(), all.c_str(), "f");
    services.PutSetting("large", large.c_str(), "f");
    EXPECT_EQ(services.GetSetting(name.c_str(), "f"), all.c_str());
    EXPECT_EQ(services.GetSetting("large", "f"), large.c_str());
    EXPECT_THAT(NamesOf("f"), ElementsAre(name, "large"));
}

TEST(GetSetting, GivesTheEmptyTextForANameNeverWritten)
{
    const SettingsSite site;
    ZORDuxServices services;
    EXPECT_EQ(services.GetSetting("A", "missing"), "");
    site.Write("f", "B = \"1\"\n");
    EXPECT_EQ(services.GetSetting("A", "f"), "");
}

TEST(GetSetting, GivesTheSecondItemOfTheAttribute)
{
    const SettingsSite site;
    site.Write("f", "A = [\"first\", \"second\", \"third\"]\nB = [\"alone\"]\n");
    ZORDuxServices services;
    EXPECT_EQ(services.GetSetting("A", "f"), "second");
    EXPECT_EQ(services.GetSetting("B", "f"), "");
    EXPECT_EQ(services.GetSetting("first", "f"), "");
}

TEST(ListOfSettingVariables, ListsTheStoredNamesInTheOrderOfTheFile)
{
    const SettingsSite site;
    site.Write("f", "C = \"1\"\nA = [\"stored\", \"2\"]\nB = [\"C\", \"3\"]\n");
    EXPECT_THAT(NamesOf("f"), ElementsAre("C", "stored", "C"));
    EXPECT_THAT(NamesOf("missing"), IsEmpty());
}

TEST(ListOfSettingVariables, AnAttributeThatStoresNoNameIsListedEmpty)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\nB = []\n");
    EXPECT_THAT(NamesOf("f"), ElementsAre("A", ""));
}

TEST(PutSetting, SaysOkOnlyWhenTheFileIsSaved)
{
    const SettingsSite site;
    site.Directory().Write("file", "in the way");
    ZORDuxServices services;
    const CapturedOutput output(STDERR_FILENO);
    TraceLines lines;
    const std::string name = site.Directory() / "file/f";
    RaisedBy([&] { services.PutSetting("A", "1", name.c_str()); });
    EXPECT_EQ(lines.Taken().back(), "   ZORDuxServices::PutSetting iFileName = " + name);
}

TEST(RemoveSetting, RemovesEveryAttributeThatStoresTheName)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\nB = [\"A\", \"2\"]\nC = \"3\"\nD = [\"A\", \"4\"]\n");
    ZORDuxServices().RemoveSetting("A", "f");
    EXPECT_EQ(site.Read("f"), "C = \"3\"\n");
}

TEST(RemoveSetting, GoesByTheStoredNameNotByTheAttribute)
{
    const SettingsSite site;
    const std::string text = "A = [\"other\", \"1\"]\n";
    site.Write("f", text);
    ZORDuxServices services;
    services.RemoveSetting("A", "f");
    services.RemoveSetting("OTHER", "f");
    EXPECT_EQ(site.Read("f"), text);
    services.RemoveSetting("other", "f");
    EXPECT_EQ(site.Read("f"), "");
}

TEST(RemoveSetting, LeavesAnAttributeThatStoresNoName)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\nB = []\nC = \"\"\n");
    ZORDuxServices().RemoveSetting("A", "f");
    EXPECT_EQ(site.Read("f"), "B = []\nC = \"\"\n");
}

TEST(RemoveSetting, ChangesNothingWhenTheNameIsNotThere)
{
    const SettingsSite site;
    const std::string text = "# remark\nA = \"1\"\n";
    site.Write("f", text);
    ZORDuxServices().RemoveSetting("B", "f");
    ZORDuxServices().RemoveSetting("B", "missing");
    EXPECT_EQ(site.Read("f"), text);
}

TEST(Settings, AnswerFromTheFileAsItIsNow)
{
    const SettingsSite site;
    ZORDuxServices services;
    for (char digit = '0'; digit <= '9'; ++digit) {
        site.Write("f", std::string("A = \"") + digit + "\"\n");
        EXPECT_EQ(services.GetSetting("A", "f"), std::string(1, digit).c_str());
    }
}

TEST(Settings, AreTraced)
{
    const SettingsSite site;
    ZORDuxServices services;
    TraceLines lines;
    services.PutSetting("A", "1", "f");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::PutSetting iSettingName = A",
                                           "   ZORDuxServices::PutSetting iSettingValue = 1",
                                           "   ZORDuxServices::PutSetting iFileName = f",
                                           "   ZORDuxServices::PutSetting OK"));
    services.PutSetting("B", "2", "f");
    lines.Taken();
    services.GetSetting("A", "f");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::GetSetting iVariableName = A",
                                           "   ZORDuxServices::GetSetting iFileName = f",
                                           "   ZORDuxServices::GetSetting retour = 1"));
    services.ListOfSettingVariables("f");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::ListOfSettingVariables iFileName = f",
                            "   ZORDuxServices::ListOfSettingVariables Name = A",
                            "   ZORDuxServices::ListOfSettingVariables Name = B"));
    services.RemoveSetting("A", "f");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::RemoveSetting iSettingName = A",
                                           "   ZORDuxServices::RemoveSetting iFileName = f"));
}

namespace
{

struct Check {
    const char* operation;
    int line;
    const char* note; // null: none
    void (*call)(ZORDuxServices&);
};

const Check kChecks[] = {
    {"GetSetting", 801, "FileName is NULL", [](ZORDuxServices& s) { s.GetSetting("A", ""); }},
    {"GetSetting", 801, "FileName is NULL", [](ZORDuxServices& s) { s.GetSetting("", ""); }},
    {"GetSetting", 814, "VariableName is NULL", [](ZORDuxServices& s) { s.GetSetting("", "f"); }},
    {"PutSetting", 929, "FileName is NULL", [](ZORDuxServices& s) { s.PutSetting("A", "1", ""); }},
    {"RemoveSetting", 1022, nullptr, [](ZORDuxServices& s) { s.RemoveSetting("A", ""); }},
    {"ListOfSettingVariables", 528, "FileName is NULL",
     [](ZORDuxServices& s) { s.ListOfSettingVariables(""); }},
};

} // namespace

TEST(Settings, RefuseAnEmptyFileOrVariableNameWithABareErrorOfAFixedLine)
{
    const SettingsSite site;
    for (const Check& check : kChecks) {
        SCOPED_TRACE(std::string(check.operation) + " " + std::to_string(check.line));
        ZORDuxServices services;
        const CapturedOutput output(STDERR_FILENO);
        const ZORHandle<ZORError> error = RaisedBy([&] { check.call(services); });
        EXPECT_STREQ(error->IsA(), "ZORDUXNLSError");
        EXPECT_EQ(error->GetId(), 0U);
        EXPECT_STREQ(error->GetFile(), kSource);
        EXPECT_EQ(error->GetLine(), check.line);
        const std::string place =
            std::string(" raised in ") + kSource + ", line " + std::to_string(check.line) + "\n";
        EXPECT_EQ(output.Text(), "ZORDUXNLSError (0x0)" + place + "ZORDUXNLSError" + place);
    }
}

TEST(Settings, NoteARefusalInTheTrace)
{
    const SettingsSite site;
    for (const Check& check : kChecks) {
        SCOPED_TRACE(std::string(check.operation) + " " + std::to_string(check.line));
        ZORDuxServices services;
        const CapturedOutput output(STDERR_FILENO);
        TraceLines lines;
        RaisedBy([&] { check.call(services); });
        const std::string last = lines.Taken().back();
        const std::string start = std::string("   ZORDuxServices::") + check.operation + " ";
        if (check.note)
            EXPECT_EQ(last, start + check.note);
        else
            EXPECT_EQ(last, start + "iFileName = ");
    }
}

TEST(Settings, ADamagedFileIsToldBeforeAnEmptyVariableName)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\nB = \n");
    const CapturedOutput output(STDERR_FILENO);
    const ZORHandle<ZORError> error = RaisedBy([] { ZORDuxServices().GetSetting("", "f"); });
    EXPECT_STREQ(error->IsA(), "ZORSettingError");
    EXPECT_THAT(error->GetMessage(0).ConvertToChar(), HasSubstr("f.toml"));
    EXPECT_THAT(error->GetMessage(0).ConvertToChar(), HasSubstr("line 2"));
    EXPECT_THAT(output.Text(), StartsWith("ZORSettingError (0x0): "));
}

TEST(Settings, ADamagedFileIsNeverWrittenTo)
{
    const SettingsSite site;
    const std::string damaged = "A = \"1\"\nB = \n";
    site.Write("f", damaged);
    const CapturedOutput output(STDERR_FILENO);
    RaisedBy([] { ZORDuxServices().PutSetting("A", "2", "f"); });
    RaisedBy([] { ZORDuxServices().RemoveSetting("A", "f"); });
    RaisedBy([] { ZORDuxServices().ListOfSettingVariables("f"); });
    EXPECT_EQ(site.Read("f"), damaged);
}
