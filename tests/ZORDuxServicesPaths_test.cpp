#include "ZORDuxServices.h"

#include "CapturedOutput.h"
#include "CountedAllocations.h"
#include "RaisedBy.h"
#include "SettingsSite.h"
#include "Texts.h"
#include "TraceLines.h"

#include <climits>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <unistd.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A site with files, and the search path in its settings.
class Site
{
public:
    void SearchPath(const std::string& iValue) const
    {
        ZORDuxServices().PutSetting("DUX_SEARCH_PATH", iValue.c_str(), "DUXAdmin");
    }
    void Setting(const char* iName, const std::string& iValue) const
    {
        ZORDuxServices().PutSetting(iName, iValue.c_str(), "DUXAdmin");
    }
    void File(const std::string& iName) const { _Directory.Write(iName, "x"); }
    std::string operator/(const std::string& iName) const { return _Directory / iName; }

private:
    SettingsSite _Settings;
    ScopedDirectory _Directory;
    ScopedWorkingDirectory _There{_Directory.Path()};
};

std::string Search(const std::string& iName)
{
    return ZORDuxServices().SearchPath(iName.c_str()).ConvertToChar();
}

std::vector<std::string> Split(const std::string& iPath, const std::string& iSeparator = ":")
{
    ZORDuxServices services;
    services.PutSettingSeparator(iSeparator.c_str());
    return Texts(services.SeekPath(iPath.c_str()));
}

// The splitting as the C library's tokeniser does it.
std::vector<std::string> SplitByTokeniser(std::string iPath, const std::string& iSeparator)
{
    std::vector<std::string> pieces;
    char* rest = nullptr;
    for (char* token = strtok_r(iPath.data(), iSeparator.c_str(), &rest); token;
         token = strtok_r(nullptr, iSeparator.c_str(), &rest)) {
        std::string piece(token);
        piece.erase(0, piece.find_first_not_of(' '));
        piece.erase(piece.find_last_not_of(' ') + 1);
        pieces.push_back(piece);
    }
    return pieces;
}

} // namespace

TEST(SeekPath, SplitsAtEachCharacterOfTheSeparator)
{
    struct Row {
        const char* path;
        const char* separator;
        std::vector<std::string> pieces;
    };
    const Row rows[] = {
        {"/a:/b", ":", {"/a", "/b"}},
        {"/a", ":", {"/a"}},
        {"::a: b ::", ":", {"a", "b"}},
        {"", ":", {}},
        {":::", ":", {}},
        {"/a:/b;/c,/d", ":;", {"/a", "/b", "/c,/d"}},
        {"/a;:;:/b", ":;", {"/a", "/b"}},
        // Blanks around a piece go, those inside stay; other white space is no blank.
        {"  /a b  :\t/c\t", ":", {"/a b", "\t/c\t"}},
        // A piece of blanks alone stays, empty.
        {"/a:  :/b", ":", {"/a", "", "/b"}},
        {"  ", ":", {""}},
        // Without a separator the list is one piece.
        {"/a:/b", "", {"/a:/b"}},
        {"", "", {}},
        // Characters of several bytes separate as a whole.
        {"/a·/bÂ/c", "·", {"/a", "/bÂ/c"}},
        {"/a·:/b", "·:", {"/a", "/b"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Split(row.path, row.separator), row.pieces)
            << row.path << " by " << row.separator;
}

TEST(SeekPath, SplitsAsTheTokeniserDoes)
{
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    const std::string letters = "a/ :;,";
    for (int i = 0; i < 20000; ++i) {
        std::string path;
        for (std::size_t n = random() % 12; n > 0; --n)
            path += letters[random() % letters.size()];
        std::string separator;
        for (std::size_t n = random() % 4; n > 0; --n)
            separator += ":;,"[random() % 3];
        ASSERT_EQ(Split(path, separator), SplitByTokeniser(path, separator))
            << '"' << path << "\" by \"" << separator << "\", seed " << seed;
    }
}

TEST(SeekPath, DoesNotDisturbATokeniserLoopOfTheCaller)
{
    char text[] = "one two three";
    EXPECT_STREQ(std::strtok(text, " "), "one");
    Split("/a:/b");
    EXPECT_STREQ(std::strtok(nullptr, " "), "two");
}

TEST(SeekPath, TracesItsArgument)
{
    ZORDuxServices services;
    TraceLines lines;
    services.SeekPath("/a:/b");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::SeekPath iFullPath = /a:/b"));
}

TEST(SeekFile, GivesTheFirstDirectoryThatHasTheFile)
{
    const Site site;
    site.File("one/x");
    site.File("two/x");
    site.File("two/y");
    ZORDuxServices services;
    const std::string path = site / "missing:" + (site / "one:") + (site / "two");
    EXPECT_EQ(services.SeekFile("x", path.c_str()), (site / "one/x").c_str());
    EXPECT_EQ(services.SeekFile("y", path.c_str()), (site / "two/y").c_str());
    EXPECT_EQ(services.SeekFile("z", path.c_str()), "");
    EXPECT_EQ(services.SeekFile("x", ""), "");
    EXPECT_EQ(services.SeekFile("x", ":::"), "");
}

TEST(SeekFile, KeepsTheBlanksOfADirectory)
{
    const Site site;
    site.File(" one /x");
    EXPECT_EQ(ZORDuxServices().SeekFile("x", "two: one "), " one /x");
    EXPECT_EQ(ZORDuxServices().SeekFile("x", "one"), "");
}

TEST(SeekFile, PassesOverAPathThatIsTooLongForAFile)
{
    const Site site;
    site.File("there/file");
    ZORDuxServices services;
    const std::string there = site / "there";
    constexpr std::size_t kLongest = PATH_MAX;
    for (const std::size_t length : {kLongest - 6, kLongest - 5, kLongest, 3 * kLongest}) {
        const std::string path = "/" + std::string(length - 1, 'a') + ":" + there;
        EXPECT_EQ(services.SeekFile("file", path.c_str()), (there + "/file").c_str());
    }
    // The longest path that a file can have, and one more.
    const std::string root(PATH_MAX - 1 - there.size() - 5, '/');
    const std::string longest = root + there;
    EXPECT_EQ(services.SeekFile("file", longest.c_str()), (longest + "/file").c_str());
    EXPECT_EQ(services.SeekFile("file", ("/" + longest).c_str()), "");
}

TEST(SeekFile, AllocatesNothingButTheResult)
{
    const Site site;
    site.File("there/file");
    std::string path;
    for (int i = 0; i < 10; ++i)
        path += site / ("a directory that is not there " + std::to_string(i)) + ":";
    path += site / "there";
    ZORDuxServices services;
    const ZORUnicodeString name = "file";
    const ZORUnicodeString list(path);
    const CountedAllocations allocations;
    const ZORUnicodeString found = services.SeekFile(name, list);
    const ZORUnicodeString none = services.SeekFile("none", list);
    EXPECT_EQ(allocations.Count(), 1);
    EXPECT_EQ(found, (site / "there/file").c_str());
    EXPECT_TRUE(none.IsEmpty());
}

TEST(SeekFile, TakesAnEmptyNameForTheDirectoryItself)
{
    const Site site;
    site.File("one/x");
    EXPECT_EQ(ZORDuxServices().SeekFile("", "two:one"), "one/");
}

TEST(SeekFile, SplitsAtTheSeparatorOfTheServices)
{
    const Site site;
    site.File("a:b/x");
    ZORDuxServices services;
    services.PutSettingSeparator(";");
    EXPECT_EQ(services.SeekFile("x", "c;a:b"), "a:b/x");
}

TEST(SeekFile, TracesEveryDirectoryAndTheHit)
{
    const Site site;
    site.File("two/x");
    ZORDuxServices services;
    TraceLines lines;
    services.SeekFile("x", "one:two:three");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::SeekFile iFileName = x",
                                           "   ZORDuxServices::SeekFile iPath = one:two:three",
                                           "   ZORDuxServices::SeekFile Path = one",
                                           "   ZORDuxServices::SeekFile Path = two",
                                           "   ZORDuxServices::SeekFile Path = two/x"));
}

TEST(SearchPath, FindsThePlainNameAlongTheSearchPath)
{
    const Site site;
    site.File("one/plate");
    site.File("two/plate");
    site.SearchPath(site / "none:" + (site / "one:") + (site / "two"));
    EXPECT_EQ(Search("plate"), site / "one/plate");
}

TEST(SearchPath, PrefersTheSearchPathToTheDirectoryOfTheArgument)
{
    const Site site;
    site.File("a/b/c.txt");
    site.File("site/c.txt");
    site.SearchPath(site / "site");
    EXPECT_EQ(Search("a/b/c.txt"), site / "site/c.txt");
}

TEST(SearchPath, FallsBackOnTheDirectoryOfTheArgument)
{
    const Site site;
    site.File("a/b/c.txt");
    site.SearchPath(site / "none");
    EXPECT_EQ(Search("a/b/c.txt"), "a/b/c.txt");
    EXPECT_EQ(Search(site / "a/b/c.txt"), site / "a/b/c.txt");
}

TEST(SearchPath, TakesTheDirectoryOfTheArgumentForAPathList)
{
    const Site site;
    site.File("b/c.txt");
    EXPECT_EQ(Search("a:b/c.txt"), "b/c.txt");
}

TEST(SearchPath, FallsBackOnTheCurrentDirectoryWithTheBareName)
{
    const Site site;
    site.File("c.txt");
    EXPECT_EQ(Search("c.txt"), "c.txt");
    EXPECT_EQ(Search("a/b/c.txt"), "c.txt");
    // Directly under the root there is no directory left to look in.
    EXPECT_EQ(Search("/c.txt"), "c.txt");
}

TEST(SearchPath, GivesTheEmptyTextWhenNothingIsFound)
{
    const Site site;
    site.SearchPath(site / "one");
    EXPECT_EQ(Search("plate"), "");
    EXPECT_EQ(Search("a/plate"), "");
}

TEST(SearchPath, ANameThatEndsInASlashAsksForADirectory)
{
    const Site site;
    site.File("dir/x");
    EXPECT_EQ(Search("dir/"), "dir/");
    EXPECT_EQ(Search("none/"), "");
    site.SearchPath(site / "none:" + (site / "dir"));
    EXPECT_EQ(Search("none/"), site / "dir/");
    // Nothing found along the search path is not enough, not even for an empty base name.
    site.SearchPath(site / "none");
    EXPECT_EQ(Search("dir/"), "dir/");
}

TEST(SearchPath, TheEmptyNameFindsTheFirstDirectoryOrNothing)
{
    const Site site;
    EXPECT_EQ(Search(""), "");
    site.File("dir/x");
    site.SearchPath(site / "dir");
    EXPECT_EQ(Search(""), site / "dir/");
}

TEST(SearchPath, ReplacesAnEntryByASetting)
{
    const Site site;
    site.File("opt/x/plate");
    site.SearchPath("none:$$OTHER");
    site.Setting("OTHER", site / "opt/x");
    EXPECT_EQ(Search("plate"), site / "opt/x/plate");
}

TEST(SearchPath, AnEntryOfAMissingSettingIsNoDirectory)
{
    const Site site;
    site.File("$$OTHER/plate");
    site.SearchPath("$$OTHER");
    EXPECT_EQ(Search("plate"), "");
}

TEST(SearchPath, NamesASettingByTheWholeEntry)
{
    const Site site;
    site.File("opt/plate");
    site.Setting("OTHER", site / "none");
    site.Setting("OTHER/sub", site / "opt");
    site.SearchPath("$$OTHER/sub");
    EXPECT_EQ(Search("plate"), site / "opt/plate");
}

TEST(SearchPath, TakesOnlyAnEntryThatBeginsWithTheMarkForASetting)
{
    const Site site;
    site.File("x$$OTHER/plate");
    site.Setting("OTHER", site / "none");
    site.SearchPath("x$$OTHER");
    EXPECT_EQ(Search("plate"), "x$$OTHER/plate");
}

TEST(SearchPath, ExpandsTheVariableOfASetting)
{
    const Site site;
    const ScopedEnvironment root("KW_ROOT", site / "opt");
    site.File("opt/lib/plate");
    site.Setting("OTHER", "$KW_ROOT/lib");
    site.SearchPath("$$OTHER");
    EXPECT_EQ(Search("plate"), site / "opt/lib/plate");
}

TEST(SearchPath, ExpandsTheFirstVariableOfAnEntry)
{
    const Site site;
    const ScopedEnvironment root("KW_ROOT", site / "opt");
    const ScopedEnvironment version("KW_VERSION", "5");
    site.File("opt/data/plate");
    site.File("opt/5/bolt");
    site.SearchPath("$KW_ROOT/data:" + (site / "opt/$KW_VERSION"));
    EXPECT_EQ(Search("plate"), site / "opt/data/plate");
    EXPECT_EQ(Search("bolt"), site / "opt/5/bolt");
    site.File("opt/$KW_VERSION/nut");
    site.SearchPath("$KW_ROOT/$KW_VERSION");
    EXPECT_EQ(Search("nut"), site / "opt/$KW_VERSION/nut");
}

TEST(SearchPath, SearchesAnEntryWithAnUnsetVariableAsItStands)
{
    const Site site;
    const ScopedEnvironment unset("KW_UNSET", std::nullopt);
    const ScopedEnvironment empty("KW_EMPTY", "");
    site.File("x$KW_UNSET/plate");
    site.File("x$KW_EMPTY/bolt");
    site.SearchPath("x$KW_UNSET:x$KW_EMPTY");
    EXPECT_EQ(Search("plate"), "x$KW_UNSET/plate");
    EXPECT_EQ(Search("bolt"), "x$KW_EMPTY/bolt");
}

TEST(SearchPath, AVariableMayHoldSeveralDirectories)
{
    const Site site;
    const ScopedEnvironment two("KW_TWO", site / "one:" + (site / "two"));
    site.File("two/plate");
    site.SearchPath("$KW_TWO");
    EXPECT_EQ(Search("plate"), site / "two/plate");
}

TEST(SearchPath, LeavesTheSettingAsItIs)
{
    const Site site;
    const ScopedEnvironment root("KW_ROOT", "/opt");
    site.SearchPath(" $KW_ROOT : $$OTHER ");
    Search("plate");
    EXPECT_EQ(ZORDuxServices().GetSetting("DUX_SEARCH_PATH", "DUXAdmin"), " $KW_ROOT : $$OTHER ");
}

TEST(SearchPath, WithAnEmptySeparatorTheWholeListIsOneEntry)
{
    const Site site;
    site.File("a:b/plate");
    site.SearchPath("a:b");
    ZORDuxServices services;
    services.PutSettingSeparator("");
    EXPECT_EQ(services.SearchPath("plate"), "a:b/plate");
}

TEST(SearchPath, AnErrorOfASettingIsToldByBothOperations)
{
    const Site site;
    site.SearchPath("$$");
    const CapturedOutput output(STDERR_FILENO);
    const ZORHandle<ZORError> error = RaisedBy([] { Search("plate"); });
    EXPECT_STREQ(error->IsA(), "ZORDUXNLSError");
    EXPECT_EQ(error->GetLine(), 814);
    const std::string place =
        " raised in VirtualServices/KW4TOOLS.m/src/ZORDuxServices, line 814\n";
    const std::string once = "ZORDUXNLSError (0x0)" + place + "ZORDUXNLSError" + place;
    EXPECT_EQ(output.Text(), once + once);
}

TEST(SearchPath, TracesARelativeNameFoundOnTheSearchPath)
{
    const Site site;
    const ScopedEnvironment root("KW_ROOT", "opt/");
    site.File("opt/lib/plate");
    site.Setting("OTHER", "none");
    site.SearchPath("$$OTHER:$KW_ROOT/lib:rest");
    ZORDuxServices services;
    TraceLines lines;
    services.SearchPath("plate");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::SearchPath iFileName = plate",
                            "   ZORDuxServices::SearchPath Relative Naming Mode",
                            "   ZORDuxServices::SearchPath RelativeName = plate",
                            "   ZORDuxServices::SearchPath Analyze by DUX_SEARCH_PATH: Begin",
                            "      ZORDuxServices::GetSetting iVariableName = DUX_SEARCH_PATH",
                            "      ZORDuxServices::GetSetting iFileName = DUXAdmin",
                            "      ZORDuxServices::GetSetting retour = $$OTHER:$KW_ROOT/lib:rest",
                            "      ZORDuxServices::SeekPath iFullPath = $$OTHER:$KW_ROOT/lib:rest",
                            "   ZORDuxServices::SearchPath Decode setting Path: $$OTHER",
                            "      ZORDuxServices::GetSetting iVariableName = OTHER",
                            "      ZORDuxServices::GetSetting iFileName = DUXAdmin",
                            "      ZORDuxServices::GetSetting retour = none",
                            "   ZORDuxServices::SearchPath Shell = KW_ROOT",
                            "   ZORDuxServices::SearchPath New shell Path: opt/lib",
                            "      ZORDuxServices::SeekFile iFileName = plate",
                            "      ZORDuxServices::SeekFile iPath = none:opt/lib:rest:",
                            "      ZORDuxServices::SeekFile Path = none",
                            "      ZORDuxServices::SeekFile Path = opt/lib",
                            "      ZORDuxServices::SeekFile Path = opt/lib/plate",
                            "   ZORDuxServices::SearchPath File is found",
                            "   ZORDuxServices::SearchPath GoodPath = opt/lib/plate"));
}

TEST(SearchPath, TracesANameWithADirectoryThatIsFoundThere)
{
    const Site site;
    site.File("a/b/c.txt");
    ZORDuxServices services;
    TraceLines lines;
    services.SearchPath("a/b/c.txt");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::SearchPath iFileName = a/b/c.txt",
                            "   ZORDuxServices::SearchPath Absolute Naming Mode",
                            "   ZORDuxServices::SearchPath ArgDir = a/b",
                            "   ZORDuxServices::SearchPath RelativeName = c.txt",
                            "   ZORDuxServices::SearchPath Analyze by DUX_SEARCH_PATH: Begin",
                            "      ZORDuxServices::GetSetting iVariableName = DUX_SEARCH_PATH",
                            "      ZORDuxServices::GetSetting iFileName = DUXAdmin",
                            "      ZORDuxServices::GetSetting retour = ",
                            "   ZORDuxServices::SearchPath Analyze argument PATH : Begin",
                            "      ZORDuxServices::SeekFile iFileName = c.txt",
                            "      ZORDuxServices::SeekFile iPath = a/b",
                            "      ZORDuxServices::SeekFile Path = a/b",
                            "      ZORDuxServices::SeekFile Path = a/b/c.txt",
                            "   ZORDuxServices::SearchPath File is found",
                            "   ZORDuxServices::SearchPath GoodPath = a/b/c.txt"));
}

namespace
{

// The lines of SearchPath itself after the search path and the argument's directory gave nothing.
std::vector<std::string> LastLines(const char* iName, std::size_t iCount)
{
    ZORDuxServices services;
    TraceLines lines;
    services.SearchPath(iName);
    std::vector<std::string> all = lines.Taken();
    return {all.end() - static_cast<std::ptrdiff_t>(iCount), all.end()};
}

} // namespace

TEST(SearchPath, TracesTheCurrentDirectory)
{
    const Site site;
    EXPECT_THAT(LastLines("plate", 5),
                ElementsAre("   ZORDuxServices::SearchPath Analyze argument PATH : Begin",
                            "      ZORDuxServices::SeekFile iFileName = plate",
                            "      ZORDuxServices::SeekFile iPath = ",
                            "   ZORDuxServices::SearchPath Analyze in Local Directory : Begin",
                            "   ZORDuxServices::SearchPath File not found"));
    site.File("plate");
    EXPECT_THAT(LastLines("plate", 3),
                ElementsAre("   ZORDuxServices::SearchPath Analyze in Local Directory : Begin",
                            "   ZORDuxServices::SearchPath File is found",
                            "   ZORDuxServices::SearchPath RelativeName = plate"));
}

TEST(SearchPath, TracesAnEmptyBaseNameAsFoundInAnyCase)
{
    const Site site;
    EXPECT_THAT(LastLines("none/", 2), ElementsAre("   ZORDuxServices::SearchPath File is found",
                                                   "   ZORDuxServices::SearchPath GoodPath = "));
}

TEST(SearchPath, TracesTheShellNameEvenWhenItIsUnset)
{
    const Site site;
    const ScopedEnvironment unset("KW_UNSET", std::nullopt);
    site.SearchPath("x$KW_UNSET");
    ZORDuxServices services;
    TraceLines lines;
    services.SearchPath("plate");
    const std::vector<std::string> all = lines.Taken();
    EXPECT_THAT(all, ::testing::Contains("   ZORDuxServices::SearchPath Shell = KW_UNSET"));
    EXPECT_THAT(all, ::testing::Not(::testing::Contains(::testing::HasSubstr("New shell Path"))));
}

TEST(SeekEnv, ExpandsTheFirstVariable)
{
    struct Row {
        const char* path;
        const char* result;
    };
    const ScopedEnvironment home("KW_HOME", "/home/u");
    const ScopedEnvironment slash("KW_SLASH", "/home/u/");
    const ScopedEnvironment version("KW_VER", "5");
    const ScopedEnvironment letter("a", "z");
    const ScopedEnvironment dollar("KW_DOLLAR", "x$y");
    const ScopedEnvironment withDollar("Q", "x$y");
    const ScopedEnvironment unset("KW_UNSET", std::nullopt);
    const ScopedEnvironment empty("KW_EMPTY", "");
    for (const Row& row : {
             Row{"$KW_HOME/lib", "/home/u/lib"},
             Row{"$KW_SLASH/lib", "/home/u/lib"},
             Row{"/opt/$KW_VER", "/opt/5"},
             Row{"/opt/$KW_VER/x/$KW_VER", "/opt/5/x/$KW_VER"},
             Row{"$KW_UNSET/$KW_HOME", "$KW_UNSET/$KW_HOME"},
             Row{"/opt/$KW_EMPTY/x", "/opt/$KW_EMPTY/x"},
             Row{"/plain//path", "/plain//path"},
             Row{"", ""},
             Row{"$", "$"},
             Row{"/opt/$", "/opt/$"},
             Row{"$/opt", "$/opt"},
             Row{"$$KW_HOME", "$$KW_HOME"},
             // The value goes where the name first stands, which may be before the "$".
             Row{"/data/$a", "/dzta/a"},
             Row{"/KW_VER/$KW_VER", "/5/KW_VER"},
             Row{"a$a", "za"},
             // The first "$" of the whole goes, be it the value's own.
             Row{"$KW_DOLLAR/x", "x$y/x"},
             Row{"/Q/$Q", "/xy/$Q"},
             // One "//" becomes "/".
             Row{"//a//$KW_VER", "/a//5"},
         })
        EXPECT_EQ(ZORDuxServices().SeekEnv(row.path), row.result) << row.path;
}

TEST(SeekEnv, TracesTheNameAndTheResult)
{
    const ScopedEnvironment version("KW_VER", "5");
    const ScopedEnvironment unset("KW_UNSET", std::nullopt);
    ZORDuxServices services;
    TraceLines lines;
    services.SeekEnv("/opt/$KW_VER/x");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::SeekEnv iPath = /opt/$KW_VER/x",
                                           "   ZORDuxServices::SeekEnv Shell = KW_VER",
                                           "   ZORDuxServices::SeekEnv Path = /opt/5/x"));
    services.SeekEnv("/opt/$KW_UNSET");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::SeekEnv iPath = /opt/$KW_UNSET",
                                           "   ZORDuxServices::SeekEnv Shell = KW_UNSET",
                                           "   ZORDuxServices::SeekEnv Path = /opt/$KW_UNSET"));
    services.SeekEnv("/opt");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::SeekEnv iPath = /opt",
                                           "   ZORDuxServices::SeekEnv Path = /opt"));
}

TEST(SeekEnv, ReadsTheVariableAfterItsNameWasTraced)
{
    const ScopedEnvironment late("KW_LATE", "before");
    TraceLines lines;
    lines.onLine = [](const std::string& line) {
        if (line.find(" Shell = ") != std::string::npos)
            setenv("KW_LATE", "after", 1);
    };
    EXPECT_EQ(ZORDuxServices().SeekEnv("/$KW_LATE"), "/after");
}

TEST(GetEnv, GivesTheDirectoriesOfAVariable)
{
    const ScopedEnvironment path("KW_PATH", "/a: :/b::/c d");
    const ScopedEnvironment empty("KW_EMPTY", "");
    const ScopedEnvironment unset("KW_UNSET", std::nullopt);
    ZORDuxServices services;
    EXPECT_THAT(Texts(services.GetEnv("KW_PATH")), ElementsAre("/a", "/b", "/c d"));
    EXPECT_THAT(Texts(services.GetEnv("KW_EMPTY")), IsEmpty());
    EXPECT_THAT(Texts(services.GetEnv("KW_UNSET")), IsEmpty());
    EXPECT_THAT(Texts(services.GetEnv("")), IsEmpty());
    services.PutSettingSeparator("c");
    EXPECT_THAT(Texts(services.GetEnv("KW_PATH")), ElementsAre("/a: :/b::/", "d"));
}

TEST(GetEnv, TracesTheValueOfASetVariable)
{
    const ScopedEnvironment path("KW_PATH", "/a:/b");
    const ScopedEnvironment empty("KW_EMPTY", "");
    const ScopedEnvironment unset("KW_UNSET", std::nullopt);
    ZORDuxServices services;
    TraceLines lines;
    services.GetEnv("KW_PATH");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::GetEnv iEnvType = KW_PATH",
                                           "   ZORDuxServices::GetEnv TheVar = /a:/b",
                                           "      ZORDuxServices::SeekPath iFullPath = /a:/b"));
    services.GetEnv("KW_EMPTY");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::GetEnv iEnvType = KW_EMPTY",
                                           "   ZORDuxServices::GetEnv TheVar = ",
                                           "      ZORDuxServices::SeekPath iFullPath = "));
    services.GetEnv("KW_UNSET");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::GetEnv iEnvType = KW_UNSET"));
}
