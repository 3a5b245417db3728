// kw4tools status

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

// The lines, but for those on the catalogs that are installed with the platform.
std::vector<std::string> Lines(const std::string& iPrinted)
{
    std::vector<std::string> lines;
    std::istringstream stream(iPrinted);
    for (std::string line; std::getline(stream, line);)
        if (line.find("share/zor/catalogs") == std::string::npos)
            lines.push_back(line);
    return lines;
}

} // namespace

TEST(kw4tools_status, PrintsTheSettingsDirectoriesAndWhichFilesAreShadowed)
{
    Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("first/site.toml", "");
    program.Site().Write("second/other.toml", "");
    program.Site().Write("second/site.toml", "");
    program.Run().Environment("ZOR_SETTINGS_PATH",
                              root + "/first:" + root + "/none:" + root + "/second");
    EXPECT_THAT(Lines(program.Result({"status"})),
                ElementsAre("settings directory: " + root + "/first (exists)",
                            "settings file: " + root + "/first/site.toml",
                            "settings directory: " + root + "/none (missing)",
                            "settings directory: " + root + "/second (exists)",
                            "settings file: " + root + "/second/other.toml",
                            "settings file: " + root + "/second/site.toml (shadowed by " + root +
                                "/first/site.toml)"));
}

TEST(kw4tools_status, PrintsTheCatalogDirectoriesAndWhichFilesComeBehindOthers)
{
    Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("first/fr/Texts.toml", "");
    program.Site().Write("second/Texts.toml", "");
    program.Site().Write("second/fr/Texts.toml", "");
    program.Run()
        .Environment("ZOR_SETTINGS_PATH", root + "/none")
        .Environment("ZOR_CATALOG_PATH", root + "/first:" + root + "/second");
    EXPECT_THAT(Lines(program.Result({"status"})),
                ElementsAre("settings directory: " + root + "/none (missing)",
                            "catalog directory: " + root + "/first (exists)",
                            "catalog file: " + root + "/first/fr/Texts.toml",
                            "catalog directory: " + root + "/second (exists)",
                            "catalog file: " + root + "/second/Texts.toml",
                            "catalog file: " + root + "/second/fr/Texts.toml (behind " + root +
                                "/first/fr/Texts.toml)"));
    EXPECT_THAT(program.Result({"status"}), HasSubstr("catalog directory: /"))
        << "the installed one";
}

TEST(kw4tools_status, PrintsTheDictionaryDirectories)
{
    Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("dictionary/rights.toml", "");
    program.Run()
        .Environment("ZOR_SETTINGS_PATH", root + "/none")
        .Environment("ZOR_DICTIONARY_PATH", root + "/dictionary:" + root + "/none");
    EXPECT_THAT(Lines(program.Result({"status"})),
                ElementsAre("settings directory: " + root + "/none (missing)",
                            "dictionary directory: " + root + "/dictionary (exists)",
                            "dictionary file: " + root + "/dictionary/rights.toml",
                            "dictionary directory: " + root + "/none (missing)"));
}

TEST(kw4tools_status, PrintsTheExpandedSearchPathAndWhichEntriesExist)
{
    Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("models/plate.model", "");
    program.Site().Write("DUXAdmin.toml",
                         "DUX_SEARCH_PATH = \"$HERE/models:$$MORE:$NOTHING:/nowhere\"\n"
                         "MORE = \"/etc/../etc:$HERE\"\n");
    program.Run().Environment("HERE", root).Environment("NOTHING", std::nullopt);
    EXPECT_THAT(Lines(program.Result({"status"})),
                ElementsAre("settings directory: " + root + " (exists)",
                            "settings file: " + root + "/DUXAdmin.toml",
                            "search path entry: " + root + "/models (exists)",
                            "search path entry: /etc/../etc (exists)",
                            "search path entry: " + root + " (exists)",
                            "search path entry: $NOTHING (missing)",
                            "search path entry: /nowhere (missing)"));
}

// The blanks around an entry go, those of a value that takes its place stay.
TEST(kw4tools_status, PrintsTheEntriesWithTheBlanksThatTheSearchKeeps)
{
    Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write(" models /plate.model", "");
    program.Site().Write("DUXAdmin.toml", "DUX_SEARCH_PATH = \" $LIST : \"\n");
    program.Run().Environment("LIST", "/nowhere: models : ");
    EXPECT_EQ(program.Result({"search", "plate.model"}), " models /plate.model\n");
    EXPECT_THAT(Lines(program.Result({"status"})),
                ElementsAre("settings directory: " + root + " (exists)",
                            "settings file: " + root + "/DUXAdmin.toml",
                            "search path entry: /nowhere (missing)",
                            "search path entry:  models  (exists)",
                            "search path entry:   (missing)"));
}

TEST(kw4tools_status, PrintsAsMuchAsThereIs)
{
    Kw4tools program;
    program.Run().Environment("ZOR_SETTINGS_PATH", std::nullopt).Environment("HOME", std::nullopt);
    EXPECT_THAT(Lines(program.Result({"status"})), ElementsAre());
}

TEST(kw4tools_status, SaysWhatToDoWhenTheSearchPathCannotBeRead)
{
    const Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("DUXAdmin.toml", "DUX_SEARCH_PATH =\n");
    const auto [status, out, err] = program({"status"});
    EXPECT_EQ(status, 2);
    EXPECT_THAT(Lines(out), ElementsAre("settings directory: " + root + " (exists)",
                                        "settings file: " + root + "/DUXAdmin.toml"));
    EXPECT_THAT(err, HasSubstr("kw4tools: the search path cannot be read: mend"));
    program.Site().Write("DUXAdmin.toml", "DUX_SEARCH_PATH = '/site:$$'\n");
    EXPECT_THAT(program({"status"}).err, HasSubstr("is \"$$\" and no name"));
}
