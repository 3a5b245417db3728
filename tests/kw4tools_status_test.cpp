// kw4tools status

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

TEST(kw4tools_status, PrintsDirectoriesWithTheirFilesAndTheSearchPath)
{
    Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("first/site.toml", "");
    program.Site().Write("second/DUXAdmin.toml",
                         "DUX_SEARCH_PATH = \"$HERE/first:$$MORE:/nowhere\"\n"
                         "MORE = \"" +
                             root + "/second:$HERE\"\n");
    program.Site().Write("second/site.toml", "");
    program.Site().Write("dictionary/rights.toml", "");
    program.Run()
        .Environment("ZOR_SETTINGS_PATH", root + "/first:" + root + "/none:" + root + "/second")
        .Environment("ZOR_DICTIONARY_PATH", root + "/dictionary:" + root + "/none")
        .Environment("HERE", root);
    const std::string lines[] = {
        "settings directory: " + root + "/first (exists)",
        "settings file: " + root + "/first/site.toml",
        "settings directory: " + root + "/none (missing)",
        "settings directory: " + root + "/second (exists)",
        "settings file: " + root + "/second/DUXAdmin.toml",
        "settings file: " + root + "/second/site.toml (shadowed by " + root + "/first/site.toml)",
        "dictionary directory: " + root + "/dictionary (exists)",
        "dictionary file: " + root + "/dictionary/rights.toml",
        "dictionary directory: " + root + "/none (missing)",
        "search path entry: " + root + "/first (exists)",
        "search path entry: " + root + "/second (exists)",
        "search path entry: " + root + " (exists)",
        "search path entry: /nowhere (missing)",
    };
    std::string expected;
    for (const std::string& line : lines)
        expected += line + "\n";
    EXPECT_EQ(program.Result({"status"}), expected);
}

TEST(kw4tools_status, PrintsAsMuchAsThereIs)
{
    Kw4tools program;
    program.Run().Environment("ZOR_SETTINGS_PATH", std::nullopt).Environment("HOME", std::nullopt);
    EXPECT_EQ(program.Result({"status"}), "");
}

TEST(kw4tools_status, SaysWhatToDoWhenTheSearchPathCannotBeTold)
{
    const Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("DUXAdmin.toml", "DUX_SEARCH_PATH =\n");
    const auto [status, out, err] = program({"status"});
    EXPECT_EQ(status, 2);
    EXPECT_EQ(out, "settings directory: " + root + " (exists)\nsettings file: " + root +
                       "/DUXAdmin.toml\n");
    EXPECT_THAT(err, HasSubstr("kw4tools: the search path cannot be told: mend"));
}
