// kw4tools settings

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace
{

// Names and values of every kind that an argument can have.
std::vector<std::string> OddTexts()
{
    std::vector<std::string> texts = {
        "x",    "two words", " blanks ", "a\nb\n", "\n",
        "\r\n", "\t",        "\"",       "'",      "\"\"\"",
        "'''",  "=",         "#",        "]",      "[a,b]",
        "a.b",  "\\",        "\\u0041",  "%%",     "\xff",
        "\xc3", "\xc3\xa9",  "$HOME",    "-5",     std::string(100000, 'v')};
    std::string every;
    for (int byte = 1; byte < 256; ++byte)
        every += static_cast<char>(byte);
    texts.push_back(every);
    return texts;
}

} // namespace

TEST(kw4tools_settings, GetPrintsWhatPutStored)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"settings", "put", "site", "PATH", "/a:/b"}), "");
    EXPECT_EQ(program.Result({"settings", "get", "site", "PATH"}), "/a:/b\n");
    EXPECT_EQ(program.Site().Read("site.toml"), "PATH = \"/a:/b\"\n");
}

TEST(kw4tools_settings, GetPrintsEveryValueByteForByte)
{
    const Kw4tools program;
    for (const std::string& value : OddTexts()) {
        SCOPED_TRACE(value.substr(0, 80));
        ASSERT_EQ(program.Result({"settings", "put", "site", "NAME", "--", value}), "");
        EXPECT_EQ(program.Result({"settings", "get", "site", "NAME"}), value + "\n");
    }
}

TEST(kw4tools_settings, ListPrintsEveryNameByteForByte)
{
    const Kw4tools program;
    std::string names;
    for (const std::string& name : OddTexts()) {
        if (name.size() > 199)
            continue;
        ASSERT_EQ(program.Result({"settings", "put", "site", "--", name, "v"}), "");
        EXPECT_EQ(program.Result({"settings", "get", "site", "--", name}), "v\n");
        names += name + '\0';
    }
    EXPECT_EQ(program.Result({"settings", "list", "site", "-0"}), names);
}

TEST(kw4tools_settings, GetTellsNoSettingFromAnEmptyOne)
{
    const Kw4tools program;
    program.Site().Write("site.toml", "EMPTY = \"\"\nOTHER = [\"EMPTIER\", \"\"]\nLONE = [\"x\"]\n"
                                      "NONE = []\n[table]\nINSIDE = \"\"\n");
    for (const char* name : {"EMPTY", "OTHER", "LONE", "NONE"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(program.Result({"settings", "get", "site", name}), "\n");
    }
    for (const char* name : {"MISSING", "EMPTIER", "table", "INSIDE", "empty"}) {
        SCOPED_TRACE(name);
        const auto [status, out, err] = program({"settings", "get", "site", name});
        EXPECT_EQ(status, 1);
        EXPECT_EQ(out, "");
        EXPECT_EQ(err, "");
    }
    EXPECT_EQ(program({"settings", "get", "missing", "NAME"}).status, 1);
}

TEST(kw4tools_settings, GetTakesTheAttributeNameAndListTheStoredName)
{
    const Kw4tools program;
    program.Site().Write("site.toml", "ATTRIBUTE = [\"STORED\", \"value\"]\n");
    EXPECT_EQ(program.Result({"settings", "get", "site", "ATTRIBUTE"}), "value\n");
    EXPECT_EQ(program({"settings", "get", "site", "STORED"}).status, 1);
    EXPECT_EQ(program.Result({"settings", "list", "site"}), "STORED\n");
}

TEST(kw4tools_settings, GetPrintsValuesThatAreNoStringsAsTheirText)
{
    const Kw4tools program;
    program.Site().Write("site.toml", "PORT = 8080\nON = true\nDAY = 2024-02-29\n");
    EXPECT_EQ(program.Result({"settings", "get", "site", "PORT"}), "8080\n");
    EXPECT_EQ(program.Result({"settings", "get", "site", "ON"}), "true\n");
    EXPECT_EQ(program.Result({"settings", "get", "site", "DAY"}), "2024-02-29\n");
}

TEST(kw4tools_settings, GetPrintsTheFileAndTheLineThatAValueComesFrom)
{
    Kw4tools program;
    program.Site().Write("one/site.toml", "# first\nA = \"1\"\n\nB = \"\"\"\nx\"\"\"\nC = \"3\"\n");
    program.Site().Write("two/site.toml", "D = \"4\"\n");
    const std::string one = program.Site() / "one";
    program.Run().Environment("ZOR_SETTINGS_PATH", one + ":" + (program.Site() / "two"));
    EXPECT_EQ(program.Result({"settings", "get", "--origin", "site", "A"}), one + "/site.toml:2\n");
    EXPECT_EQ(program.Result({"settings", "get", "site", "B", "--origin"}), one + "/site.toml:4\n");
    EXPECT_EQ(program.Result({"settings", "get", "site", "C", "--origin"}), one + "/site.toml:6\n");
    const auto [status, out, err] = program({"settings", "get", "--origin", "site", "D"});
    EXPECT_EQ(status, 1);
    EXPECT_EQ(out + err, "");
}

TEST(kw4tools_settings, ListPrintsTheNamesInTheOrderOfTheFile)
{
    const Kw4tools program;
    program.Site().Write("site.toml", "Z = \"1\"\nA = \"2\"\nM = [\"Z\", \"3\"]\n");
    EXPECT_EQ(program.Result({"settings", "list", "site"}), "Z\nA\nZ\n");
    EXPECT_EQ(program.Result({"settings", "list", "-0", "site"}), std::string("Z\0A\0Z\0", 6));
    EXPECT_EQ(program.Result({"settings", "list", "missing"}), "");
}

TEST(kw4tools_settings, RemoveRemovesEverySettingOfThatStoredName)
{
    const Kw4tools program;
    program.Site().Write("site.toml", "A = \"1\"\nB = \"2\"\nC = [\"A\", \"3\"]\n");
    EXPECT_EQ(program.Result({"settings", "remove", "site", "A"}), "");
    EXPECT_EQ(program.Site().Read("site.toml"), "B = \"2\"\n");
}

TEST(kw4tools_settings, RemoveExitsWithOneWhenNothingMatched)
{
    const Kw4tools program;
    program.Site().Write("site.toml", "A = [\"B\", \"1\"]\n");
    for (const char* name : {"A", "b", ""}) {
        const auto [status, out, err] = program({"settings", "remove", "site", name});
        EXPECT_EQ(status, 1);
        EXPECT_EQ(out + err, "");
    }
    EXPECT_EQ(program.Site().Read("site.toml"), "A = [\"B\", \"1\"]\n");
}

TEST(kw4tools_settings, PutTakesTheEmptyName)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"settings", "put", "site", "", "v"}), "");
    EXPECT_EQ(program.Result({"settings", "list", "site"}), "\n");
    EXPECT_EQ(program.Result({"settings", "remove", "site", ""}), "");
    EXPECT_EQ(program.Result({"settings", "list", "site"}), "");
}

TEST(kw4tools_settings, TakesAPathForASettingsFile)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"settings", "put", "./other.toml", "A", "1"}), "");
    EXPECT_EQ(program.Result({"settings", "get", program.Site() / "other.toml", "A"}), "1\n");
    EXPECT_EQ(program.Site().Read("other.toml"), "A = \"1\"\n");
}

TEST(kw4tools_settings, SaysWhatToDoWhenAnErrorIsRaised)
{
    const struct {
        Kw4tools::Arguments arguments;
        const char* library; // what the library has told before
        const char* advice;
    } rows[] = {
        {{"get", "", "A"},
         "line 801\n",
         "the name of the settings file is empty; give one, such "
         "as DUXAdmin"},
        {{"get", "site", ""}, "line 814\n", "the name of the setting is empty; give one"},
        {{"put", "", "A", "1"}, "line 929\n", "the name of the settings file is empty"},
        {{"list", ""}, "line 528\n", "the name of the settings file is empty"},
        {{"remove", "", "A"}, "line 528\n", "the name of the settings file is empty"},
        {{"get", "damaged", "A"}, "damaged.toml: line 1, column ", "'damaged'; mend what"},
        {{"get", "--origin", "damaged", "A"},
         "damaged.toml: line 1, column ",
         "'damaged'; mend what"},
        {{"edit", "/dev/null"}, "it is a device, not a file", "'/dev/null'; mend what"},
        {{"edit", ""}, "needs a name", "the name of the settings file is empty"},
        {{"put", "damaged", "A", "1"}, "damaged.toml: line 1, column ", "'damaged'; mend what"},
        {{"remove", "damaged", "A"}, "damaged.toml: line 1, column ", "'damaged'; mend what"},
        {{"list", "damaged"}, "damaged.toml: line 1, column ", "'damaged'; mend what"},
        {{"put", "site", std::string(200, 'n'), "1"}, "199", "'site'; mend what"},
        {{"put", "/etc/passwd/site", "A", "1"},
         "cannot reach /etc/passwd/site: Not a directory",
         "'/etc/passwd/site'; mend what"},
    };
    const Kw4tools program;
    program.Site().Write("damaged.toml", "A = \n");
    for (const auto& row : rows) {
        Kw4tools::Arguments arguments = row.arguments;
        arguments.insert(arguments.begin(), "settings");
        const auto [status, out, err] = program(arguments);
        SCOPED_TRACE(err);
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, HasSubstr(row.library));
        const std::string last = err.substr(err.rfind("kw4tools: "));
        EXPECT_THAT(last, HasSubstr(row.advice));
        EXPECT_THAT(last, EndsWith("\n"));
    }
    EXPECT_EQ(program.Site().Read("damaged.toml"), "A = \n");
}
