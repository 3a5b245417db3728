#include "ZORMsgCatalog.h"

#include "CatalogSite.h"
#include "CountedAllocations.h"
#include "RaisedBy.h"
#include "ZORMsg.h"
#include "ZORMsgError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <utility>
#include <vector>

namespace
{

using testing::AllOf;
using testing::ElementsAreArray;
using testing::HasSubstr;

// A component, held until the end of the scope.
template <class Component>
ZORHandle<Component> Held(Component* iComponent)
{
    const ZORHandle<Component> handle(iComponent);
    iComponent->Release();
    return handle;
}

std::string Text(ZORMsgCatalog& ioCatalog, const char* iKey)
{
    return Held(ioCatalog.GetMsg(iKey))->GetText().ConvertToChar();
}

std::string Text(const char* iCatalog, const char* iKey)
{
    ZORMsgCatalog catalog(iCatalog);
    return Text(catalog, iKey);
}

// What the error says that asking for a text raises.
std::string Failure(const char* iCatalog, const char* iKey)
{
    const ZORHandle<ZORError> error = RaisedBy([&] { Text(iCatalog, iKey); });
    EXPECT_EQ(error->IsAKindOf("ZORMsgError"), 1);
    EXPECT_EQ(error->IsAKindOf("ZORError"), 1);
    return error->GetMessage(0).ConvertToChar();
}

} // namespace

TEST(ZORMsgCatalog, GivesTheMessageOfAKey)
{
    const CatalogSite site;
    site.Write("Site", "[CDA_W_0001]\n"
                       "Short = \"The part {1} is locked.\"\n"
                       "Long = \"\"\"The part {1} is locked by {2}.\n"
                       "Ask for a release, or work on a copy.\"\"\"\n");
    auto* const catalog = new ZORMsgCatalog("Site");
    ZORMsg* const message = catalog->GetMsg("CDA_W_0001.Long");
    const ZORUnicodeString parameters[] = {"plate", "ann"};
    EXPECT_EQ(message->BuildMessage(parameters), "The part plate is locked by ann.\n"
                                                 "Ask for a release, or work on a copy.");
    EXPECT_EQ(message->Release(), 0U);
    EXPECT_EQ(catalog->Release(), 0U);
}

TEST(ZORMsgCatalog, AKeyIsThePathToAText)
{
    const CatalogSite site;
    site.Write("Site", "Plain = 'plain'\n"
                       "20002 = 'digits'\n"
                       "One.Short = 'dotted'\n"
                       "\"Quoted one\" = 'with a blank'\n"
                       "\"With.dot\" = 'quoted dot'\n"
                       "Inline = { Short = 'inline', Long = 'longer' }\n"
                       "Escaped = \"\\u00e9\\t\\\"\"\n"
                       "Empty = ''\n"
                       "[Table]\n"
                       "Short = 'in a table'\n"
                       "[Table.Deeper]\n"
                       "Short = 'deeper'\n");
    const std::pair<const char*, const char*> rows[] = {
        {"Plain", "plain"},
        {"20002", "digits"},
        {"One.Short", "dotted"},
        {"Quoted one", "with a blank"},
        {"With.dot", "quoted dot"},
        {"Inline.Short", "inline"},
        {"Inline.Long", "longer"},
        {"Escaped", "\u00e9\t\""},
        {"Empty", ""},
        {"Table.Short", "in a table"},
        {"Table.Deeper.Short", "deeper"},
    };
    ZORMsgCatalog catalog("Site");
    for (const auto& [key, text] : rows)
        EXPECT_EQ(Text(catalog, key), text) << key;
}

TEST(ZORMsgCatalog, AMissingKeyIsAnErrorThatNamesCatalogAndKey)
{
    const CatalogSite site;
    site.Write("Site", "[A]\nShort = 'text'\nNumber = 1\nList = ['a']\nCut = \"a\\u0000b\"\n"
                       "[[Tables]]\nShort = 'text'\n");
    for (const char* key : {"B.Short", "A", "A.short", "A.Short.", ".A.Short", "", "A.Number",
                            "A.List", "A.Cut", "Tables.Short", "Short"})
        EXPECT_EQ(Failure("Site", key),
                  std::string("message catalog Site: there is no text for ") + key);
}

TEST(ZORMsgCatalog, AMissingCatalogIsAnErrorThatNamesCatalogAndKey)
{
    const CatalogSite site;
    site.Write("sub/Site", "A = 'text'\n");
    EXPECT_EQ(Failure("Nobody", "A"), "message catalog Nobody: not found (asked for A)");
    EXPECT_EQ(Failure("", "A"), "message catalog : not found (asked for A)");
    EXPECT_EQ(Failure(nullptr, "A"), "message catalog : not found (asked for A)");
    EXPECT_EQ(Failure("sub/Site", "A"), "message catalog sub/Site: not found (asked for A)");
    EXPECT_EQ(Failure("Site.toml", "A"), "message catalog Site.toml: not found (asked for A)");
    EXPECT_THAT(Failure(std::string(300, 'x').c_str(), "A"),
                AllOf(HasSubstr(std::string(300, 'x')), HasSubstr("File name too long")));
}

TEST(ZORMsgCatalog, ACatalogIsOnlyOpenedForItsMessages)
{
    const CatalogSite site;
    ZORMsgCatalog catalog("Late");
    site.Write("Late", "A = 'text'\n");
    EXPECT_EQ(Text(catalog, "A"), "text");
}

TEST(ZORMsgCatalog, StaysUsableAfterAnError)
{
    const CatalogSite site;
    site.Write("Site", "A = 'text'\n");
    ZORMsgCatalog catalog("Site");
    EXPECT_NE(RaisedBy([&] { Text(catalog, "B"); }).Get(), nullptr);
    EXPECT_EQ(Text(catalog, "A"), "text");
}

namespace
{

// A user's locales, and the sub-directories that are looked into for them in two directories.
struct LocaleRow {
    const char* language;
    const char* all;
    const char* messages;
    const char* lang;
    std::vector<std::string> places;
};

// The order in which texts are found: each place answers with its own name, and is then taken away.
std::vector<std::string> OrderOfSearch(const std::vector<std::string>& iPlaces)
{
    const ScopedDirectory root;
    const std::string file = root.Write("file", "no directory");
    const ScopedEnvironment path("ZOR_CATALOG_PATH", (root / "first") + "::" + (root / "missing") +
                                                         ":" + file + ":" + (root / "second") +
                                                         ":");
    for (const std::string& place : iPlaces)
        root.Write(place + "/Site.toml", "Name = '" + place + "'\n");
    std::vector<std::string> order;
    while (order.size() < iPlaces.size()) {
        ZORMsgCatalog catalog("Site");
        try {
            order.push_back(Text(catalog, "Name"));
        } catch (const ZORRaisedError&) {
            break;
        }
        std::filesystem::remove(root / (order.back() + "/Site.toml"));
    }
    return order;
}

std::optional<std::string> Value(const char* iText)
{
    return iText ? std::optional<std::string>(iText) : std::nullopt;
}

} // namespace

TEST(ZORMsgCatalog, LooksForTheUsersLocalesInTheOrderOfGettext)
{
    const std::vector<std::string> all = {"first",
                                          "second",
                                          "first/fr",
                                          "second/fr",
                                          "first/fr_CA",
                                          "second/fr_CA",
                                          "first/de",
                                          "second/de",
                                          "first/de@euro",
                                          "second/de@euro",
                                          "first/de_AT",
                                          "second/de_AT",
                                          "first/C",
                                          "second/C",
                                          "first/de_AT.UTF-8@euro",
                                          "first/de_AT@euro",
                                          "first/en",
                                          "first/de_AT.UTF-8",
                                          "first/POSIX"};
    const std::vector<std::string> none = {"first", "second"};
    const std::vector<std::string> french = {"first/fr", "second/fr", "first", "second"};
    const std::vector<std::string> german = {"first/de", "second/de", "first", "second"};
    const std::vector<LocaleRow> rows = {
        {nullptr, nullptr, nullptr, nullptr, none},
        {nullptr, nullptr, nullptr, "fr", french},
        {nullptr, nullptr, "fr", "de", french},
        {nullptr, "fr", "de", "en", french},
        {nullptr, "", "fr", "de", french}, // set but empty is not set
        {nullptr, "", "", "fr", french},
        {"", nullptr, nullptr, "fr", french},
        {"de", nullptr, nullptr, "fr", german},
        {"de", "fr", nullptr, nullptr, german},
        // No translation for those who ask for none.
        {"de", nullptr, nullptr, nullptr, none},
        {"de", "C", nullptr, "fr", none},
        {"de", nullptr, "POSIX", "fr", none},
        {nullptr, "C", nullptr, "fr", none},
        {"C", nullptr, nullptr, "fr", none},
        {"POSIX:de", nullptr, nullptr, "fr", none},
        {"de:C:fr", nullptr, nullptr, "fr", german},
        {"de", nullptr, nullptr, "C.UTF-8", german},
        // Lists, and the forms of a name.
        {"fr:de",
         nullptr,
         nullptr,
         "en",
         {"first/fr", "second/fr", "first/de", "second/de", "first", "second"}},
        {":fr::", nullptr, nullptr, "en", french},
        {"fr_CA:fr",
         nullptr,
         nullptr,
         "en",
         {"first/fr_CA", "first/fr", "second/fr_CA", "second/fr", "first", "second"}},
        {nullptr,
         nullptr,
         nullptr,
         "de_AT.UTF-8@euro",
         {"first/de_AT.UTF-8@euro", "first/de_AT@euro", "first/de_AT", "first/de@euro", "first/de",
          "second/de_AT", "second/de@euro", "second/de", "first", "second"}},
        {nullptr,
         nullptr,
         nullptr,
         "de_AT.UTF-8",
         {"first/de_AT.UTF-8", "first/de_AT", "first/de", "second/de_AT", "second/de", "first",
          "second"}},
        // A name that is no directory's beside the others.
        {"../first:fr", nullptr, nullptr, "en", french},
        {"..:fr", nullptr, nullptr, "en", french},
        {".:fr", nullptr, nullptr, "en", french},
        {"/first:fr", nullptr, nullptr, "en", french},
        {"@euro:fr", nullptr, nullptr, "en", french},
        {"klingon:fr", nullptr, nullptr, "en", french},
    };
    for (const LocaleRow& row : rows) {
        const ScopedEnvironment language("LANGUAGE", Value(row.language));
        const ScopedEnvironment lcAll("LC_ALL", Value(row.all));
        const ScopedEnvironment messages("LC_MESSAGES", Value(row.messages));
        const ScopedEnvironment lang("LANG", Value(row.lang));
        EXPECT_THAT(OrderOfSearch(all), ElementsAreArray(row.places))
            << testing::PrintToString(std::vector<std::optional<std::string>>{
                   Value(row.language), Value(row.all), Value(row.messages), Value(row.lang)});
    }
}

TEST(ZORMsgCatalog, AHalfTranslatedCatalogStillAnswers)
{
    const CatalogSite site;
    const ScopedEnvironment language("LANG", "fr_CA.UTF-8");
    site.Write("Site", "[A]\nShort = 'a'\nLong = 'aa'\n[B]\nShort = 'b'\n");
    site.Write("fr/Site", "[A]\nShort = 'fr a'\n[C]\nShort = 'fr c'\n");
    site.Write("fr_CA/Site", "[C]\nShort = 'ca c'\n");
    ZORMsgCatalog catalog("Site");
    EXPECT_EQ(Text(catalog, "A.Short"), "fr a");
    EXPECT_EQ(Text(catalog, "A.Long"), "aa");
    EXPECT_EQ(Text(catalog, "B.Short"), "b");
    EXPECT_EQ(Text(catalog, "C.Short"), "ca c");
}

TEST(ZORMsgCatalog, SettlesTheLocaleWhenItIsMade)
{
    const CatalogSite site;
    site.Write("Site", "A = 'all'\n");
    site.Write("fr/Site", "A = 'fr'\n");
    ZORMsgCatalog catalog("Site");
    const ScopedEnvironment language("LANG", "fr");
    EXPECT_EQ(Text(catalog, "A"), "all");
    EXPECT_EQ(Text("Site", "A"), "fr");
}

TEST(ZORMsgCatalog, KeepsWhatItReadAndReadsAChangedFileAgain)
{
    const CatalogSite site;
    site.Write("Site", "A = 'one'\n");
    ZORMsgCatalog catalog("Site");
    EXPECT_EQ(Text(catalog, "A"), "one");
    for (const char* text : {"two", "six", "ten"}) { // as long, and within the clock's grain
        site.Write("Site", std::string("A = '") + text + "'\n");
        EXPECT_EQ(Text("Site", "A"), text);
        EXPECT_EQ(Text(catalog, "A"), "one");
    }
}

// Files that have not changed for some seconds: those of the source tree.
TEST(ZORMsgCatalog, DoesNotReadAnUnchangedFileTwice)
{
    const CatalogSite site;
    const ScopedEnvironment path("ZOR_CATALOG_PATH", INSTALLED_CATALOGS);
    const ScopedEnvironment language("LANG", "fr");
    const auto bytesRead = [] {
        std::ifstream counters("/proc/self/io");
        std::string name;
        long count = 0;
        counters >> name >> count;
        return count;
    };
    Text("ZORDuxServicesMsg", "20002");
    const long before = bytesRead();
    const long ofCounting = bytesRead() - before;
    Text("ZORDuxServicesMsg", "20002");
    EXPECT_EQ(bytesRead() - before, 2 * ofCounting);
}

TEST(ZORMsgCatalog, KeepsTheFilesReadLastAndNoMore)
{
    const CatalogSite site;
    const auto read = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            const std::string name = "Site" + std::to_string(i);
            std::filesystem::create_symlink(INSTALLED_CATALOGS "/en/ZORDuxServicesMsg.toml",
                                            site.Directory() / (name + ".toml"));
            Text(name.c_str(), "20002");
        }
    };
    const CountedAllocations counted;
    read(0, 60);
    const long ofSixty = counted.Live();
    EXPECT_GT(ofSixty, 60);
    read(60, 600);
    EXPECT_LT(counted.Live(), 2 * ofSixty);
}

TEST(ZORMsgCatalog, AnotherFileInTheSamePlaceIsReadHoweverOldItIs)
{
    const CatalogSite site;
    const std::string path = site.Directory() / "Site.toml";
    for (const char* language : {"fr", "en", "fr", "en"}) {
        std::filesystem::remove(path);
        const std::string target =
            std::string(INSTALLED_CATALOGS "/") + language + "/ZORDuxServicesMsg.toml";
        std::filesystem::create_symlink(target, path);
        EXPECT_THAT(Text("Site", "20002"),
                    HasSubstr(*language == 'f' ? "Le composant" : "The component"));
    }
}

TEST(ZORMsgCatalog, ADamagedFileIsAnErrorWithFileLineAndColumn)
{
    const CatalogSite site;
    const std::string file = site.Write("Site", "A = 'fine'\n  B = \"\u00e9\" x\n");
    EXPECT_THAT(Failure("Site", "A"),
                AllOf(HasSubstr("message catalog " + file + ": line 2, column 11: ")));
    site.Write("Site", "A = 'fine'\nB = 'never closed\n");
    EXPECT_THAT(
        Failure("Site", "A"),
        HasSubstr("line 2, column 18: the quotation mark at the end of the text is missing"));
    const char* const damaged[] = {
        "A",           "A =",          "A = 'x", "[A",  "A = 'x'\nA = 'y'",
        "A = \"\\q\"", "A = \"\xFF\"", "\xC3",   "= 1", "[A]\n[A]\n",
        "A = '''x",    "\x01"};
    for (const char* text : damaged) {
        site.Write("Site", text);
        EXPECT_THAT(Failure("Site", "A"), HasSubstr(file + ": line ")) << text;
    }
}

TEST(ZORMsgCatalog, ADamagedTranslationIsNotPassedOverInSilence)
{
    const CatalogSite site;
    const ScopedEnvironment language("LANG", "fr");
    site.Write("Site", "A = 'text'\n");
    const std::string file = site.Write("fr/Site", "A =\n");
    EXPECT_THAT(Failure("Site", "A"), HasSubstr(file));
}

TEST(ZORMsgCatalog, AFileThatIsNoFileIsAnErrorAndNotAWait)
{
    const CatalogSite site;
    const std::string path = site.Directory() / "Site.toml";
    const auto fails = [&](const char* what) {
        EXPECT_EQ(Failure("Site", "A"), "message catalog " + path + ": it is not a file") << what;
        std::filesystem::remove(path);
    };
    std::filesystem::create_directory(path);
    fails("a directory");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    fails("a named pipe");
    std::filesystem::create_symlink("/dev/zero", path);
    fails("a device");
}

TEST(ZORMsgCatalog, AFileThatCannotBeOpenedIsAnErrorThatSaysWhy)
{
    const CatalogSite site;
    const std::string path = site.Directory() / "Site.toml";
    std::filesystem::create_symlink("Site.toml", path);
    EXPECT_EQ(Failure("Site", "A"),
              "message catalog " + path + ": cannot open it: Too many levels of symbolic links");
}

TEST(ZORMsgCatalog, AFileWithoutBoundsIsAnError)
{
    const CatalogSite site;
    const std::string path = site.Write("Site", "A = 'text'\n");
    std::filesystem::resize_file(path, (16U << 20) + 1);
    EXPECT_EQ(Failure("Site", "A"), "message catalog " + path + ": it is larger than 16 MiB");
}

TEST(ZORMsgCatalog, TakesAFileOfManyMessages)
{
    const CatalogSite site;
    std::string text;
    for (int i = 0; i < 20000; ++i)
        text += "[CDA_W_" + std::to_string(i) + "]\nShort = 'text " + std::to_string(i) + "'\n";
    site.Write("Site", text);
    EXPECT_EQ(Text("Site", "CDA_W_19999.Short"), "text 19999");
}

TEST(ZORMsgCatalog, KeysAndValuesNestedWithoutEndAreErrors)
{
    const CatalogSite site;
    const auto repeated = [](const char* piece, int times) {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += piece;
        return text;
    };
    const std::string dots = "more dots than a key can have";
    const std::string deep = "nested value depth";
    const std::pair<std::string, std::string> rows[] = {
        {"[" + repeated("a.", 1'000'000) + "a]\n", dots},
        {repeated("a.", 1'000'000) + "a = ''\n", dots},
        {"x = 'y'\nA = { x = ''''''''', " + repeated("a.", 1'000'000) + "a = '' }\n", dots},
        {"A = { x = \"\"\"\"\"\"\", " + repeated("a.", 1'000'000) + "a = '' }\n", dots},
        {"A = { x = '\\', " + repeated("a.", 1'000'000) + "a = '' }\n", dots},
        {"A = { x = \"\\\"\", " + repeated("a.", 1'000'000) + "a = '' }\n", dots},
        {"A = { x = '''''a''''', " + repeated("'a'.", 1'000'000) + "a = '' }\n", dots},
        {"A = " + repeated("[", 1'000'000), deep},
        {"A = " + repeated("{a=", 1'000'000), deep},
        {"A = " + repeated(("[\n{" + repeated("a.", 32) + "a=").c_str(), 10'000), deep},
        {"A = " + repeated("[\n", 100'000), deep},
    };
    for (const auto& [text, expected] : rows) {
        site.Write("Site", text);
        EXPECT_THAT(Failure("Site", "A"), HasSubstr(expected)) << text.substr(0, 60);
    }
}

TEST(ZORMsgCatalog, DotsInTextsAndRemarksAreAsManyAsOneLikes)
{
    const CatalogSite site;
    const std::string dots(1000, '.');
    site.Write("Site", "# " + dots + "\nA = '" + dots + "' # " + dots + "\nB = \"" + dots + "\\\"" +
                           dots + "\"\nC = '''" + dots + "''" + dots + "\n'" + dots +
                           "'''\nD = \"\"\"\n\\\"" + dots + "\"\"" + dots +
                           "\"\"\"\nE = \"\"\nF = ''\nG.G.G = ''\n");
    EXPECT_EQ(Text("Site", "A"), dots);
    EXPECT_EQ(Text("Site", "B"), dots + "\"" + dots);
    EXPECT_EQ(Text("Site", "C"), dots + "''" + dots + "\n'" + dots);
    EXPECT_EQ(Text("Site", "D"), "\"" + dots + "\"\"" + dots);
    EXPECT_EQ(Text("Site", "G.G.G"), "");
}

TEST(ZORMsgCatalog, EachPrefixOfACatalogIsReadOrRefused)
{
    const CatalogSite site;
    const std::string text = "A.Short = \"a {1}\" # remark\n"
                             "B = { Short = 'b', Long = '''\nlong ''it'' ''''' }\n"
                             "[\"C.D\".'e']\nShort = \"\"\"\\\n   c \\u00e9 \"\"\"\"\"\n";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        site.Write("Site", text.substr(0, length));
        ZORMsgCatalog catalog("Site");
        try {
            EXPECT_EQ(Text(catalog, "A.Short"), "a {1}") << length;
        } catch (const ZORRaisedError& raised) {
            EXPECT_EQ(raised.Error().IsAKindOf("ZORMsgError"), 1) << length;
        }
    }
    EXPECT_EQ(Text("Site", "B.Long"), "long ''it'' ''");
    EXPECT_EQ(Text("Site", "C.D.e.Short"), "c \u00e9 \"\"");
}

TEST(ZORMsgCatalog, ReadsWhateverBytesAFileHas)
{
    const CatalogSite site;
    const std::string text =
        "[A]\nShort = \"one {1}\"\nLong = '''two'''\nList = [1, 2.5, {a.b = 1}]\n";
    for (std::size_t at = 0; at < text.size(); ++at)
        for (const char byte :
             {'\0', '"', '\'', '\\', '\n', '.', '=', '[', ']', '{', '\xFF', '\x80'}) {
            std::string changed = text;
            changed[at] = byte;
            site.Write("Site", changed);
            try {
                Text("Site", "A.Short");
            } catch (const ZORRaisedError& raised) {
                EXPECT_EQ(raised.Error().IsAKindOf("ZORMsgError"), 1);
            }
        }
}

TEST(ZORMsgCatalog, IsReadByManyThreadsEachWithACatalogOfItsOwn)
{
    const CatalogSite site;
    site.Write("Site", "A = 'text'\n");
    std::filesystem::last_write_time(site.Directory() / "Site.toml",
                                     std::filesystem::file_time_type::clock::now() -
                                         std::chrono::hours(1));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int times = 0; times < 200; ++times)
                EXPECT_EQ(Text("Site", "A"), "text");
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(ZORMsgCatalog, KnowsItsClass)
{
    const ZORMsgCatalog catalog("Site");
    EXPECT_STREQ(catalog.IsA(), "ZORMsgCatalog");
    EXPECT_EQ(catalog.IsAKindOf("ZORBaseUnknown"), 1);
}
