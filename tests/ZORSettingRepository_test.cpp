#include "ZORSettingRepository.h"

#include "RepositorySite.h"
#include "ZORSettingError.h"

#include <algorithm>
#include <random>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;
using testing::Pair;

namespace
{

std::string EveryByte()
{
    std::string bytes;
    for (int each = 1; each < 256; ++each)
        bytes += static_cast<char>(each);
    return bytes;
}

std::string MessageFor(const std::string& iBytes)
{
    const RepositorySite site;
    site.SetBytes(iBytes);
    std::string message = ErrorOf([] { OpenSettings("site"); }).value_or("no error");
    const std::string file = "settings file " + (site / "site.toml") + ": ";
    EXPECT_THAT(message, testing::StartsWith(file));
    return message.substr(std::min(file.size(), message.size()));
}

// All that a settings file says, or what is wrong with it.
Strings ContentsOf(const std::string& iFile)
{
    Strings contents;
    const std::optional<std::string> error = ErrorOf([&] {
        const auto settings = OpenSettings(iFile);
        for (const std::string& name : ListNames(*settings)) {
            const auto [first, second] = Read(*settings, name);
            contents.push_back(name + " = " + first + ", " + second);
        }
    });
    return error ? Strings{error->substr(error->find(": "))} : contents;
}

// A line of a settings file, mostly a sound one.
std::string RandomLine(std::mt19937& ioRandom)
{
    static const Strings values = {"\"x\"",
                                   "'literal'",
                                   "\"\\u0041\\n\"",
                                   "\"\"\"\nA = 1\n\"\"\"",
                                   "'''\r\n# x\r\n'''",
                                   "[\"x\", 'y']",
                                   "[\n1,\n2 # ]\n]",
                                   "8080",
                                   "\"é\"",
                                   "\"\\u0000\\u00FF\""};
    static const Strings others = {"", "# A = \"x\"", "\t", "[t]", "x.y = 1", "\"\"\"", "A", "]"};
    const std::string end = ioRandom() % 4 == 0 ? "\r\n" : "\n";
    const std::size_t kind = ioRandom() % 60;
    if (kind < others.size())
        return others[kind] + end;
    if (kind < 16)
        return others[kind % 3] + end;
    const std::string name = std::to_string(ioRandom() % 60);
    const std::string key = kind % 2 == 0 ? name : '"' + name + '"';
    return key + " = " + values[ioRandom() % values.size()] + end;
}

} // namespace

TEST(ZORSettingRepository, KeepsASetting)
{
    const RepositorySite directory;
    std::unique_ptr<ZORSettingRepository> site(ZORSettingRepository::GetRepository("site"));
    ZORString name = "DUX_PATH", value = "/usr/share/dux";
    ZORBaseUnknown* items[] = {&name, &value};
    site->WriteSetting("DUX_PATH", items, 2);
    site->SaveRepository();
    EXPECT_EQ(directory.Bytes(), "DUX_PATH = \"/usr/share/dux\"\n");
    EXPECT_EQ(directory.Get("DUX_PATH"), "/usr/share/dux");
}

TEST(ZORSettingRepository, ReadsWhatPeopleWrite)
{
    struct Row {
        const char* written;
        Strings items;
    };
    const Row rows[] = {
        {"A = \"value\"", {"A", "value"}},
        {"A='value'", {"A", "value"}},
        {"\t A\t=\t\"\"  # nothing", {"A", ""}},
        {"\"A\" = \"x\"", {"A", "x"}},
        {"'A' = \"x\"", {"A", "x"}},
        {"\"\\u0041\" = \"x\"", {"A", "x"}},
        {"A = \"a\\tb\\n\\\"\\\\\\u00e9\\U0001F600\"", {"A", "a\tb\n\"\\é😀"}},
        {"A = 'C:\\new \"x\" # no comment'", {"A", "C:\\new \"x\" # no comment"}},
        {"A = \"\"\"\none\ntwo\"\"\"", {"A", "one\ntwo"}},
        {"A = \"\"\"\r\none\r\ntwo\r\n\"\"\"", {"A", "one\ntwo\n"}},
        {"A = \"\"\"one \\\n   \r\n\t two \\t\"\"\"", {"A", "one two \t"}},
        {"A = \"\"\"\"\"two\"\" quotes\"\"\"\"\"", {"A", "\"\"two\"\" quotes\"\""}},
        {"A = \"\"\"\"\"\"", {"A", ""}},
        {"A = '''\none\\\n'two'''''", {"A", "one\\\n'two''"}},
        {"A = ''''''", {"A", ""}},
        {"A = 8080", {"A", "8080"}},
        {"A = -1_000  # thousand", {"A", "-1_000"}},
        {"A = 0x1F", {"A", "0x1F"}},
        {"A = 6.5e-3", {"A", "6.5e-3"}},
        {"A = true", {"A", "true"}},
        {"A = 1979-05-27 07:32:00Z", {"A", "1979-05-27 07:32:00Z"}},
        {"A = inf", {"A", "inf"}},
        {"A = [\"one\", 'two', 3, true]", {"one", "two", "3", "true"}},
        {"A = [ # two of them\n  \"one\", # this\n\n  \"two\",\n]", {"one", "two"}},
        {"A = [\"B\", \"x\"]", {"B", "x"}},
        {"A = [\"only\"]", {"only"}},
        {"A = []", {}},
        {"A = \"\\u0000\\u00FF\"", {"A", "\xFF"}},
        {"A = \"\\u0000\\u00c3\\u0000\\U000000A9\"", {"A", "\xC3\xA9"}},
        {"A = \"\\u0000\u0080.\"", {"A", "\x80."}},
        {"\xEF\xBB\xBF"
         "A = \"x\"",
         {"A", "x"}},
    };
    const RepositorySite site;
    for (const Row& row : rows) {
        site.SetBytes(row.written);
        const auto settings = OpenSettings("site");
        std::vector<ZORString> strings(row.items.size() + 1, ZORString("-"));
        std::vector<ZORBaseUnknown*> items;
        for (ZORString& each : strings)
            items.push_back(&each);
        settings->ReadSetting("A", items.data(), static_cast<long>(items.size()));
        Strings expected = row.items;
        expected.push_back(""); // what is beyond the strings becomes empty
        Strings got;
        for (const ZORString& each : strings)
            got.push_back(TextOf(each));
        EXPECT_EQ(got, expected) << row.written;
        EXPECT_THAT(ListNames(*settings), ElementsAre("A")) << row.written;
    }
}

TEST(ZORSettingRepository, TakesNoTableForAnAttribute)
{
    const RepositorySite site;
    site.SetBytes("first = \"1\"\n"
                  "dotted.key = \"x\"\n"
                  "inline = { A = \"x\", B.C = [1, 2] }\n"
                  "nested = [[\"x\"], []]\n"
                  "tables = [1, { A = \"]\" } ] # ]\n"
                  "last = \"2\"\n"
                  "[table]\n"
                  "A = \"x\"\n"
                  "text = '''\n[no.table]\n'''\n"
                  "[\"deep\".er]\n"
                  "[[list.of.tables]]\n"
                  "first = \"x\"\n");
    EXPECT_THAT(site.List(), ElementsAre("first", "last"));
    for (const char* name :
         {"dotted", "key", "inline", "A", "nested", "tables", "table", "text", "deep", "list"})
        EXPECT_EQ(site.Get(name), "-") << name;
}

TEST(ZORSettingRepository, EmptiesItemsBeyondTheStringsAndLeavesOthersAlone)
{
    const RepositorySite site;
    site.Put("A", "x");
    const auto settings = OpenSettings("site");
    EXPECT_THAT(Read(*settings, "B"), Pair("-", "-"));
    ZORString first = "-", third = "-";
    ZORError other;
    ZORBaseUnknown* items[] = {&first, &other, &third};
    settings->ReadSetting("A", items, 3);
    EXPECT_EQ(TextOf(first), "A");
    EXPECT_EQ(TextOf(third), "");
    items[1] = nullptr;
    first = "-";
    settings->ReadSetting("A", items, 2);
    EXPECT_EQ(TextOf(first), "A");
    first = "-";
    settings->ReadSetting("A", items, 0);
    settings->ReadSetting("A", items, -1);
    settings->ReadSetting("A", nullptr, 2);
    settings->ReadSetting(nullptr, items, 2);
    EXPECT_EQ(TextOf(first), "-");
}

TEST(ZORSettingRepository, ShowsWhatIsWrittenBeforeItIsSaved)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\nB = \"2\"\nC = \"3\"\n");
    const auto settings = OpenSettings("site");
    Write(*settings, "A", {"A", "new"});
    Write(*settings, "D", {"one", "two", "three"});
    settings->DelAttribute("B");
    EXPECT_EQ(Read(*settings, "A").second, "new");
    EXPECT_THAT(Read(*settings, "D"), Pair("one", "two"));
    EXPECT_EQ(Read(*settings, "B").second, "-");
    EXPECT_THAT(ListNames(*settings), ElementsAre("A", "C", "D"));
    EXPECT_EQ(site.Bytes(), "A = \"1\"\nB = \"2\"\nC = \"3\"\n");
    EXPECT_EQ(site.Get("A"), "1");
    settings->SaveRepository();
    EXPECT_EQ(site.Bytes(), "A = \"new\"\nC = \"3\"\nD = [\"one\", \"two\", \"three\"]\n");
    EXPECT_EQ(Read(*settings, "A").second, "new");
}

TEST(ZORSettingRepository, ForgetsWhatIsNotSaved)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\n");
    Write(*OpenSettings("site"), "A", {"A", "2"});
    EXPECT_EQ(site.Get("A"), "1");
}

TEST(ZORSettingRepository, SavesNothingWhenNothingChanged)
{
    const RepositorySite site;
    OpenSettings("site")->SaveRepository();
    EXPECT_FALSE(std::filesystem::exists(site / "site.toml"));
    site.SetBytes("A = 'x'");
    const auto before = std::filesystem::last_write_time(site / "site.toml");
    site.Put("A", "x");
    site.Remove("B");
    EXPECT_EQ(site.Bytes(), "A = 'x'");
    EXPECT_EQ(std::filesystem::last_write_time(site / "site.toml"), before);
}

TEST(ZORSettingRepository, TakesTheLastChangeOfAName)
{
    const RepositorySite site;
    const auto settings = OpenSettings("site");
    Write(*settings, "A", {"A", "1"});
    Write(*settings, "B", {"B", "1"});
    settings->DelAttribute("A");
    Write(*settings, "B", {"B", "2"});
    settings->SaveRepository();
    EXPECT_EQ(site.Bytes(), "B = \"2\"\n");
    settings->DelAttribute("B");
    Write(*settings, "B", {"B", "3"});
    settings->SaveRepository();
    EXPECT_EQ(site.Bytes(), "B = \"3\"\n");
}

TEST(ZORSettingRepository, BringsBackEveryNameAndValue)
{
    const std::string texts[] = {
        "",
        " ",
        "plain",
        "a.b",
        "a=b",
        "#",
        "]",
        "[x]",
        "{",
        "}",
        "\"",
        "'",
        "\"\"\"",
        "'''",
        "\\",
        "\\u0041",
        "\n",
        "\r\n",
        "\r",
        "\t",
        "line\nline",
        "é",
        "日本",
        "\xFF",
        "\xC3",
        "\xC3\xA9\xC3",
        "\xED\xA0\x80",
        "\xC0\x80",
        "\xF4\x90\x80\x80",
        "\x7F",
        "\x01",
        "\xEF\xBB\xBF",
        "\xC2\x85",
        "\xE2\x80\xA8",
        EveryByte().substr(0, 199),
        EveryByte().substr(127),
    };
    const RepositorySite site;
    const Strings names(std::begin(texts), std::end(texts));
    for (const std::string& value : texts) {
        const auto settings = OpenSettings("site");
        for (const std::string& name : names)
            Write(*settings, name, {name, value});
        settings->SaveRepository();
        for (const std::string& name : names)
            ASSERT_THAT(Read(*OpenSettings("site"), name), Pair(name, value));
        ASSERT_EQ(site.List(), names);
    }
    const auto settings = OpenSettings("site");
    for (const std::string& name : names)
        settings->DelAttribute(name.c_str());
    settings->SaveRepository();
    EXPECT_EQ(site.Bytes(), "");
}

TEST(ZORSettingRepository, BringsBackEveryByteAndLongValues)
{
    const RepositorySite site;
    std::string everything;
    while (everything.size() < (1u << 20))
        everything += EveryByte();
    const std::string text(1u << 20, 'x');
    site.Put("A", everything);
    site.Put("B", text);
    site.SetBytes(site.Bytes() + "C = '''x'''\n");
    site.Put("C", text);
    EXPECT_EQ(site.Get("A"), everything);
    EXPECT_EQ(site.Get("B"), text);
    EXPECT_EQ(site.Get("C"), text);
}

TEST(ZORSettingRepository, BringsBackListsOfAnyLength)
{
    const RepositorySite site;
    for (const Strings& each : {Strings{}, Strings{""}, Strings{"A"}, Strings{"B", "x"},
                                Strings{"A", "x", ""}, Strings(1000, "\xFF\"'\n")}) {
        const auto settings = OpenSettings("site");
        Write(*settings, "A", each);
        settings->SaveRepository();
        const auto again = OpenSettings("site");
        std::vector<ZORString> strings(each.size());
        std::vector<ZORBaseUnknown*> items;
        for (ZORString& string : strings)
            items.push_back(&string);
        again->ReadSetting("A", items.data(), static_cast<long>(items.size()));
        for (std::size_t i = 0; i < each.size(); ++i)
            ASSERT_EQ(TextOf(strings[i]), each[i]);
        char name[200];
        long number = -1;
        EXPECT_EQ(again->NextAttribute(name, nullptr, &number, 0), 0);
        EXPECT_EQ(number, static_cast<long>(each.size()));
    }
}

TEST(ZORSettingRepository, VisitsEachAttributeOnceInTheOrderOfTheFile)
{
    const RepositorySite site;
    site.SetBytes("Z = \"1\"\n\"\" = \"2\"\nA = [\"p\", \"q\", \"r\"]\nM = [\"only\"]\nN = []\n");
    const auto settings = OpenSettings("site");
    struct Visit {
        std::string name, text;
        long number;
    };
    std::vector<Visit> visits;
    char name[200], text[200];
    long number;
    while (settings->NextAttribute(name, text, &number, 0) == 0)
        visits.push_back({name, text, number});
    const std::vector<Visit> expected = {
        {"Z", "1", 2}, {"", "2", 2}, {"A", "q", 3}, {"M", "only", 1}, {"N", "", 0}};
    ASSERT_EQ(visits.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(visits[i].name, expected[i].name);
        EXPECT_EQ(visits[i].text, expected[i].text);
        EXPECT_EQ(visits[i].number, expected[i].number);
    }
    EXPECT_EQ(settings->NextAttribute(name, text, &number, 0), -1);
}

TEST(ZORSettingRepository, ReadsTheAttributeItVisitsAsItIsNow)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\nB = \"2\"\n");
    const auto settings = OpenSettings("site");
    char name[200];
    ASSERT_EQ(settings->NextAttribute(name, nullptr, nullptr, 0), 0);
    EXPECT_THAT(Read(*settings, name), Pair("A", "1"));
    Write(*settings, "A", {"A", "new"});
    EXPECT_THAT(Read(*settings, name), Pair("A", "new"));
    settings->SaveRepository();
    EXPECT_THAT(Read(*settings, name), Pair("A", "new"));
    settings->DelAttribute("A");
    EXPECT_EQ(Read(*settings, name).second, "-");
    ASSERT_EQ(settings->NextAttribute(name, nullptr, nullptr, 0), 0);
    EXPECT_THAT(Read(*settings, name), Pair("B", "2"));
}

TEST(ZORSettingRepository, GoesOnVisitingWhileAttributesAreRemovedAndSaved)
{
    const RepositorySite site;
    std::string bytes;
    Strings expected;
    for (int i = 0; i < 20; ++i) {
        bytes += "N" + std::to_string(i) + " = [\"match\", \"x\"]\n";
        expected.push_back("N" + std::to_string(i));
    }
    site.SetBytes(bytes);
    const auto settings = OpenSettings("site");
    Strings visited;
    char name[200];
    while (settings->NextAttribute(name, nullptr, nullptr, 0) != -1) {
        visited.emplace_back(name);
        EXPECT_EQ(Read(*settings, name).first, "match");
        settings->DelAttribute(name);
        settings->SaveRepository();
        site.Put("other", "added by somebody else");
    }
    EXPECT_EQ(visited, expected);
    EXPECT_THAT(site.List(), ElementsAre("other"));
}

TEST(ZORSettingRepository, CutsTheTextBetweenTwoCharacters)
{
    const RepositorySite site;
    site.Put("A", std::string(198, 'x') + "é");
    const std::string longest = "N" + std::string(99, '\xFF') + std::string(99, 'x');
    site.Put(longest, std::string(199, 'y') + "z");
    const auto settings = OpenSettings("site");
    char name[200], text[200];
    settings->NextAttribute(name, text, nullptr, 0);
    EXPECT_EQ(text, std::string(198, 'x'));
    settings->NextAttribute(name, text, nullptr, 0);
    EXPECT_EQ(name, longest);
    EXPECT_EQ(text, std::string(199, 'y'));
}

TEST(ZORSettingRepository, RefusesNamesThatNoBufferTakes)
{
    const RepositorySite site;
    site.Put(std::string(199, 'x'), "longest");
    EXPECT_EQ(site.Get(std::string(199, 'x')), "longest");
    const auto settings = OpenSettings("site");
    EXPECT_THAT(ErrorOf([&] {
                    Write(*settings, std::string(200, 'x'), {"x", "y"});
                }),
                Optional(HasSubstr("199 bytes, not 200")));
    EXPECT_THAT(MessageFor("A = \"1\"\n\n  " + std::string(200, 'x') + " = \"y\"\n"),
                "line 3, column 3: a name of 200 bytes is longer than 199");
    site.SetBytes("[" + std::string(200, 'x') + "]\n");
    EXPECT_THAT(site.List(), IsEmpty());
}

TEST(ZORSettingRepository, RefusesItemsThatAreNoStrings)
{
    const RepositorySite site;
    const auto settings = OpenSettings("site");
    ZORString string = "x";
    ZORError other;
    ZORBaseUnknown* items[] = {&string, &other};
    EXPECT_THAT(ErrorOf([&] { settings->WriteSetting("A", items, 2); }),
                Optional(HasSubstr("item 2 of the attribute A is not a ZORString")));
    EXPECT_TRUE(ErrorOf([&] { settings->WriteSetting("A", nullptr, 1); }));
    EXPECT_TRUE(ErrorOf([&] { settings->WriteSetting(nullptr, items, 1); }));
    EXPECT_EQ(Read(*settings, "A").first, "-");
}

TEST(ZORSettingRepository, TellsWhereAFileIsDamaged)
{
    struct Row {
        std::string bytes;
        const char* message;
    };
    const Row rows[] = {
        {"A = \"1\"\nB = \n", "line 2, column 5: "},
        {"A = \"1\"\n\nB\n", "line 3, column 2: "},
        {"A = \"never closed\nB = \"x\"\n", "line 1, column "},
        {"A = 'x' 'y'\n", "line 1, column 9: "},
        {"A = \"é\" x\n", "line 1, column 9: "},
        {"\xEF\xBB\xBF"
         "A = @\n",
         "line 1, column "},
        {"A = \"1\"\nA = \"2\"\n", "line 2, column "},
        {"A = \"1\"\n\"\\u0041\" = \"2\"\n", "line 2, column "},
        {"A = [\"x\"\n", "line 1, column 9: "},
        {"A = \"\\q\"\n", "line 1, column "},
        {"A = \"\\uD800\"\n", "line 1, column "},
        {"A = 07\n", "line 1, column "},
        {"A = 2020-13-01\n", "line 1, column "},
        {"A = \"x\x01\"\n", "line 1, column "},
        {"# \x7F\n", "line 1, column "},
        {"A = \"x\"\rB = \"y\"\n", "line 1, column "},
        {std::string("A = \"\0\"\n", 8), "line 1, column "},
        {"A = \"1\"\n[A]\n", "line 2, column "},
        {"[A]\nB = 1\nB = 2\n", "line 3, column "},
        {"A = \"1\"\nB = \"\xC3\x28\"\n", "line 2, column 6: a byte here is not UTF-8 text"},
        {"A = \"1\"\n\"B\\u0000\" = \"x\"\n", "line 2, column 1: \\u0000 stands for nothing"},
        {"A = \"x\\u0000\"\n", "line 1, column 5: \\u0000 stands for nothing"},
        {"A = \"x\\u0000A\"\n", "line 1, column 5: \\u0000 stands for nothing"},
        {"A = [\"\\u0000\\u0000\\u0080\"]\n", "line 1, column 6: \\u0000 stands for nothing"},
        {"[\"x\\u0000\"]\n", "line 1, column 1: \\u0000 stands for nothing"},
        {"é = \"1\"\n", "line 1, column 1: "},
        {"\"\\u0000\\u00C3\\u0000\\u00A9\" = \"1\"\n\"é\" = \"2\"\n",
         "line 2, column 1: the name is there already"},
    };
    for (const Row& row : rows)
        EXPECT_THAT(MessageFor(row.bytes), testing::StartsWith(row.message)) << row.bytes;
}

TEST(ZORSettingRepository, TellsWhatToDoAboutMistakesThatManyMake)
{
    const std::string open = "the quotation mark at the end of the text is missing";
    const std::string plain = "a text needs quotation marks around it";
    const std::string backslash =
        "write each backslash twice, or the text in single quotation marks";
    const std::pair<std::string, std::string> rows[] = {
        {"A = \"never closed\nB = \"x\"\n", "line 1, column 18: " + open},
        {"A = \"1\"\n\nB = 'é\r\nC = 'x'\n", "line 3, column 7: " + open},
        {"A = [\"x\", \"y]\n", "line 1, column 14: " + open},
        {"A = \"x", "line 1, column 7: " + open},
        {"A = \"\"\"x\n", "line 1, column 9: " + open},
        {"A = /usr/include\n", "line 1, column 5: " + plain},
        {"A = plate\n", "line 1, column 5: " + plain},
        {"A = \"C:\\dux\"\n",
         "line 1, column 9: Error while parsing string: unknown escape sequence '\\d': " +
             backslash},
    };
    for (const auto& [bytes, message] : rows)
        EXPECT_EQ(MessageFor(bytes), message) << bytes;
    // A control character inside a text is another matter.
    EXPECT_THAT(MessageFor("A = \"x\x01y\"\n"), HasSubstr("control characters"));
    EXPECT_THAT(MessageFor("A = \"x\ry\"\n"), HasSubstr("control characters"));
}

TEST(ZORSettingRepository, SurvivesNestingOfAnyDepth)
{
    constexpr std::size_t deep = 1000000;
    const auto repeat = [](const std::string& iText) {
        std::string all;
        for (std::size_t i = 0; i < deep; ++i)
            all += iText;
        return all;
    };
    EXPECT_THAT(MessageFor("A = " + repeat("[")), HasSubstr("line 1, column "));
    EXPECT_THAT(MessageFor("A = " + repeat("[") + repeat("]")), HasSubstr("line 1, column "));
    EXPECT_THAT(MessageFor("A = " + repeat("{A=")), HasSubstr("line 1, column "));
    EXPECT_THAT(MessageFor("A = " + repeat("{A=") + repeat("}")), HasSubstr("line 1, column "));
    EXPECT_THAT(MessageFor("A" + repeat(".a") + " = 1\n"), HasSubstr("line 1, column "));
    EXPECT_THAT(MessageFor("[A" + repeat(".a") + "]\n"), HasSubstr("line 1, column "));
    EXPECT_THAT(MessageFor("A = {a" + repeat(".a") + " = 1}\n"), HasSubstr("line 1, column "));
    EXPECT_THAT(MessageFor("@ = 1\nA" + repeat(".a") + " = 1\n"), HasSubstr("line 1, column 1"));
    EXPECT_THAT(MessageFor(repeat("[[a]]\n[[b]]\n")), HasSubstr("dotted names"));
    EXPECT_THAT(MessageFor("A" + repeat(".a").substr(0, 3000) + " = 1\n"),
                HasSubstr("dotted names"));
}

TEST(ZORSettingRepository, TakesTablesOfReasonableDepth)
{
    const RepositorySite site;
    std::string bytes = "A = \"x\"\n[t";
    for (int i = 0; i < 990; ++i)
        bytes += ".t";
    bytes += "]\nt";
    for (int i = 0; i < 990; ++i)
        bytes += ".t";
    bytes += " = 1\n";
    site.SetBytes(bytes);
    EXPECT_EQ(site.Get("A"), "x");
    site.Put("A", "y");
    EXPECT_EQ(site.Get("A"), "y");
}

TEST(ZORSettingRepository, NeverWritesToADamagedFile)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\n");
    const auto settings = OpenSettings("site");
    Write(*settings, "A", {"A", "2"});
    const std::string damaged = "A = \"1\"\nB = \n";
    site.SetBytes(damaged);
    EXPECT_THAT(ErrorOf([&] { settings->SaveRepository(); }),
                Optional(HasSubstr("line 2, column 5")));
    EXPECT_EQ(site.Bytes(), damaged);
    site.SetBytes("A = \"1\"\n# repaired\n");
    settings->SaveRepository();
    EXPECT_EQ(site.Bytes(), "A = \"2\"\n# repaired\n");
}

TEST(ZORSettingRepository, RefusesToWriteOverATable)
{
    const RepositorySite site;
    const std::string bytes = "A = \"1\"\nd.x = 1\ni = {}\n[t]\n[u.v]\n";
    site.SetBytes(bytes);
    for (const char* name : {"d", "i", "t", "u"})
        EXPECT_THAT(ErrorOf([&] { site.Put(name, "x"); }),
                    Optional(HasSubstr("the name belongs to a table")))
            << name;
    site.Remove("t");
    EXPECT_EQ(site.Bytes(), bytes);
}

TEST(ZORSettingRepository, LooksInTheDirectoriesInTheirOrder)
{
    const ScopedDirectory root;
    root.Write("one/a.toml", "A = \"one\"\n");
    root.Write("two/a.toml", "A = \"two\"\n");
    root.Write("two/b.toml", "A = \"two\"\n");
    const ScopedEnvironment path(
        "ZOR_SETTINGS_PATH", ":" + (root / "none") + "::" + (root / "one") + "/:" + (root / "two"));
    EXPECT_EQ(Read(*OpenSettings("a"), "A").second, "one");
    EXPECT_EQ(Read(*OpenSettings("b"), "A").second, "two");
    const auto fresh = OpenSettings("c");
    EXPECT_EQ(Read(*fresh, "A").second, "-");
    Write(*fresh, "A", {"A", "new"});
    fresh->SaveRepository();
    EXPECT_EQ(root.Read("none/c.toml"), "A = \"new\"\n");
    const auto found = OpenSettings("b");
    Write(*found, "A", {"A", "changed"});
    found->SaveRepository();
    EXPECT_EQ(root.Read("two/b.toml"), "A = \"changed\"\n");
}

TEST(ZORSettingRepository, TakesANameWithASlashAsAPath)
{
    const RepositorySite site;
    const ScopedDirectory elsewhere;
    elsewhere.Write("file.conf", "A = \"x\"\n");
    EXPECT_EQ(site.Get("A", elsewhere / "file.conf"), "x");
    site.Put("A", "y", elsewhere / "file.conf");
    EXPECT_EQ(elsewhere.Read("file.conf"), "A = \"y\"\n");
    const ScopedWorkingDirectory here(elsewhere.Path());
    EXPECT_EQ(site.Get("A", "./file.conf"), "y");
    site.Put("A", "z", "new/file.toml");
    EXPECT_EQ(elsewhere.Read("new/file.toml"), "A = \"z\"\n");
}

TEST(ZORSettingRepository, FallsBackToTheUsersConfiguration)
{
    const ScopedDirectory home;
    home.Write(".config/zor/a.toml", "A = \"home\"\n");
    home.Write("xdg/zor/a.toml", "A = \"xdg\"\n");
    const ScopedEnvironment homeVariable("HOME", home.Path().string());
    for (const std::optional<std::string>& unset :
         {std::optional<std::string>(), std::optional<std::string>("")}) {
        const ScopedEnvironment path("ZOR_SETTINGS_PATH", unset);
        const ScopedEnvironment noConfiguration("XDG_CONFIG_HOME", unset);
        EXPECT_EQ(Read(*OpenSettings("a"), "A").second, "home");
        const ScopedEnvironment configuration("XDG_CONFIG_HOME", home / "xdg");
        EXPECT_EQ(Read(*OpenSettings("a"), "A").second, "xdg");
        const ScopedEnvironment relative("XDG_CONFIG_HOME", "xdg");
        EXPECT_EQ(Read(*OpenSettings("a"), "A").second, "home");
    }
}

TEST(ZORSettingRepository, IsEmptyAndCannotBeSavedWhereNothingNamesADirectory)
{
    const ScopedEnvironment home("HOME", std::nullopt);
    const ScopedEnvironment configuration("XDG_CONFIG_HOME", std::nullopt);
    for (const std::optional<std::string>& path :
         {std::optional<std::string>(), std::optional<std::string>(":")}) {
        const ScopedEnvironment variable("ZOR_SETTINGS_PATH", path);
        const auto settings = OpenSettings("site");
        EXPECT_THAT(ListNames(*settings), IsEmpty());
        Write(*settings, "A", {"A", "x"});
        EXPECT_THAT(ErrorOf([&] { settings->SaveRepository(); }),
                    Optional(HasSubstr("set ZOR_SETTINGS_PATH")));
    }
}

TEST(ZORSettingRepository, NeedsAName)
{
    const RepositorySite site;
    EXPECT_TRUE(ErrorOf([] { OpenSettings(""); }));
    EXPECT_TRUE(ErrorOf([] { ZORSettingRepository::GetRepository(nullptr); }));
    for (const std::string& name : {site / "", site / ".", site / "x/.."}) {
        std::filesystem::create_directories(site / "x");
        EXPECT_TRUE(ErrorOf([&] { OpenSettings(name); })) << name;
    }
    const auto settings = OpenSettings(site / "y/");
    Write(*settings, "A", {"A", "x"});
    EXPECT_TRUE(ErrorOf([&] { settings->SaveRepository(); }));
}

TEST(ZORSettingRepository, RaisesItsOwnKindOfError)
{
    const RepositorySite site;
    site.SetBytes("=");
    try {
        OpenSettings("site");
        FAIL() << "no error";
    } catch (const ZORRaisedError& raised) {
        EXPECT_NE(dynamic_cast<const ZORSettingError*>(&raised.Error()), nullptr);
        EXPECT_TRUE(raised.Error().IsAKindOf("ZORSettingError"));
        EXPECT_TRUE(raised.Error().IsAKindOf("ZORInternalError"));
        EXPECT_TRUE(raised.Error().IsAKindOf("ZORError"));
    }
}

TEST(ZORSettingRepository, SeesEveryChangeOfTheSameLength)
{
    const RepositorySite site;
    site.SetBytes("A = \"0\"\n");
    for (int i = 0; i < 300; ++i) {
        const std::string value(1, static_cast<char>('0' + i % 10));
        site.SetBytes("A = \"" + value + "\"\n");
        ASSERT_EQ(site.Get("A"), value);
    }
}

TEST(ZORSettingRepository, SeesAChangeWhoseTimeWasSetBack)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\n");
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(site / "site.toml", old);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(site.Get("A"), "1");
    EXPECT_EQ(site.Get("A"), "1");
    site.SetBytes("A = \"2\"\n");
    std::filesystem::last_write_time(site / "site.toml", old);
    EXPECT_EQ(site.Get("A"), "2");
    std::filesystem::remove(site / "site.toml");
    EXPECT_EQ(site.Get("A"), "-");
}

TEST(ZORSettingRepository, ReadsAChangedFileAsItReadsANewOne)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        const RepositorySite site;
        Strings lines;
        const auto anyLine = [&] {
            return lines.begin() + static_cast<std::ptrdiff_t>(random() % lines.size());
        };
        for (int step = 0; step < 60; ++step) {
            if (lines.size() < 8 || random() % 3 == 0)
                lines.insert(lines.empty() ? lines.end() : anyLine(), RandomLine(random));
            else if (random() % 2 == 0)
                *anyLine() = RandomLine(random);
            else
                lines.erase(anyLine());
            std::string bytes = seed % 5 == 0 ? "\xEF\xBB\xBF" : "";
            for (const std::string& each : lines)
                bytes += each;
            if (random() % 5 == 0)
                bytes[random() % bytes.size()] = "\"'\n #=A\xC3"[random() % 8];
            if (random() % 5 == 0)
                bytes.pop_back();
            site.SetBytes(bytes);
            const std::string fresh = "new" + std::to_string(step) + ".toml";
            site.Directory().Write(fresh, bytes);
            const Strings contents = ContentsOf(site / "site.toml");
            ASSERT_EQ(contents, ContentsOf(site / fresh))
                << "seed " << seed << ", step " << step << ":\n"
                << bytes;
            const bool damaged = contents.size() == 1 && contents[0][0] == ':';
            if (damaged && !lines.empty())
                lines.erase(anyLine());
        }
    }
}

TEST(ZORSettingRepository, SeesThatALineWithoutABreakGoesOn)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\" ");
    EXPECT_EQ(site.Get("A"), "1");
    site.SetBytes("A = \"1\" B = \"2\"\n");
    EXPECT_THAT(ErrorOf([&] { site.Get("A"); }), Optional(HasSubstr("line 1, column 9")));
}

TEST(ZORSettingRepository, KeepsTheStateItWasOpenedWithUntilASave)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\n");
    const auto settings = OpenSettings("site");
    site.SetBytes("A = \"22\"\nB = \"3\"\n");
    EXPECT_EQ(Read(*settings, "A").second, "1");
    Write(*settings, "C", {"C", "4"});
    settings->SaveRepository();
    EXPECT_EQ(Read(*settings, "A").second, "22");
    EXPECT_EQ(Read(*settings, "B").second, "3");
}

TEST(ZORSettingRepository, UsesMoreFilesThanItRemembers)
{
    const RepositorySite site;
    for (int i = 0; i < 100; ++i)
        site.Directory().Write("file" + std::to_string(i) + ".toml", "A = " + std::to_string(i));
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(site.Get("A", "file" + std::to_string(i)), std::to_string(i));
}

TEST(ZORSettingRepository, TakesAHundredThousandNames)
{
    const RepositorySite site;
    constexpr int many = 100000;
    const auto settings = OpenSettings("site");
    for (int i = 0; i < many; ++i)
        Write(*settings, "NAME_" + std::to_string(i), {"NAME_" + std::to_string(i), "value"});
    settings->SaveRepository();
    EXPECT_EQ(site.List().size(), static_cast<std::size_t>(many));
    site.Put("NAME_50000", "changed");
    site.Remove("NAME_49999");
    EXPECT_EQ(site.Get("NAME_50000"), "changed");
    EXPECT_EQ(site.Get("NAME_49999"), "-");
    EXPECT_EQ(site.List().size(), static_cast<std::size_t>(many - 1));
}

TEST(ZORSettingRepository, RefusesAFileThatIsTooLarge)
{
    const RepositorySite site;
    site.SetBytes("A = \"x\"\n");
    const auto settings = OpenSettings("site");
    Write(*settings, "B", {"B", std::string(64u << 20, 'x')});
    EXPECT_THAT(ErrorOf([&] { settings->SaveRepository(); }), Optional(HasSubstr("64 MiB")));
    EXPECT_EQ(site.Bytes(), "A = \"x\"\n");
    std::filesystem::resize_file(site / "site.toml", 1u << 30);
    EXPECT_THAT(ErrorOf([] { OpenSettings("site"); }), Optional(HasSubstr("64 MiB")));
    EXPECT_THAT(ErrorOf([&] {
                    Write(*settings, "B", {"B", "x"});
                    settings->SaveRepository();
                }),
                Optional(HasSubstr("64 MiB")));
}
