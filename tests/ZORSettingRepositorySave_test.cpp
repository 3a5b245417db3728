#include "ZORSettingRepository.h"

#include "RepositorySite.h"
#include "TomlLibrary.h"

#include <algorithm>
#include <random>

using testing::HasSubstr;

namespace
{

// The bytes of a file after one change by a repository of its own. The change is the attribute's
// strings; none removes it.
std::string After(const std::string& iBefore, const std::string& iName, const Strings& iItems)
{
    const RepositorySite site;
    site.SetBytes(iBefore);
    const auto settings = OpenSettings("site");
    if (iItems.empty())
        settings->DelAttribute(iName.c_str());
    else
        Write(*settings, iName, iItems);
    settings->SaveRepository();
    return site.Bytes();
}

std::string AfterPut(const std::string& iBefore, const std::string& iName,
                     const std::string& iValue)
{
    return After(iBefore, iName, {iName, iValue});
}

const std::string kBom = "\xEF\xBB\xBF";

using Random = std::mt19937;

std::size_t Below(Random& ioRandom, std::size_t iLimit)
{
    return ioRandom() % iLimit;
}

// A text of pieces that are awkward in one way of quoting or another.
std::string RandomText(Random& ioRandom)
{
    static const Strings pieces = {"a",    "b ",   " ",    "\t",   "\n",   "\n\n",    "\"",
                                   "\"\"", "'",    "''",   "\\",   "\\n",  "#",       "=",
                                   "]",    "[",    "{",    "}",    ",",    "é",       "日",
                                   "\r",   "\xFF", "\xC3", "\x01", "\x7F", "\xC2\x80"};
    std::string text;
    for (std::size_t left = Below(ioRandom, 7); left > 0; --left)
        text += pieces[Below(ioRandom, pieces.size())];
    return text;
}

// A text that each way of quoting carries.
std::string RandomWord(Random& ioRandom)
{
    std::string word;
    for (std::size_t left = 1 + Below(ioRandom, 8); left > 0; --left)
        word += static_cast<char>('a' + Below(ioRandom, 26));
    return word;
}

// A settings file in pieces, of which some are the values of attributes.
struct Piece {
    std::string bytes;
    std::string name; // of the attribute whose value this is
    bool isValue = false;
};

struct GeneratedFile {
    std::vector<Piece> pieces;
    Strings names;

    std::string Bytes() const
    {
        std::string all;
        for (const Piece& each : pieces)
            all += each.bytes;
        return all;
    }
};

class Generator
{
public:
    explicit Generator(unsigned iSeed) : _Random(iSeed) {}

    GeneratedFile File()
    {
        _File = {};
        _Break = Below(_Random, 3) == 0 ? "\r\n" : "\n";
        if (Below(_Random, 4) == 0)
            Add(kBom);
        for (std::size_t left = Below(_Random, 12); left > 0; --left)
            Line();
        if (Below(_Random, 2) == 0)
            Table();
        if (Below(_Random, 4) == 0)
            Add("# no line break at the end");
        return std::move(_File);
    }

    std::string Text() { return RandomText(_Random); }
    std::string Word() { return RandomWord(_Random); }
    std::size_t Number(std::size_t iLimit) { return Below(_Random, iLimit); }

private:
    void Add(const std::string& iBytes) { _File.pieces.push_back({iBytes, {}, false}); }

    std::string Blanks()
    {
        static const Strings all = {"", " ", "\t", "  ", " \t "};
        return all[Below(_Random, all.size())];
    }

    std::string LineEnd()
    {
        static const Strings comments = {"", "", "# comment \"x\" = 'y' [z]", "#"};
        return Blanks() + comments[Below(_Random, comments.size())] + _Break;
    }

    void Line()
    {
        switch (Below(_Random, 6)) {
        case 0:
            Add(LineEnd());
            break;
        case 1:
            Add("dotted" + std::to_string(_Count++) + " . 'k e y' = { a = \"x\", b = [1] }" +
                LineEnd());
            break;
        default:
            Attribute();
        }
    }

    void Attribute()
    {
        const std::string name = Name();
        _File.names.push_back(name);
        Add(Blanks() + Key(name) + Blanks() + "=" + Blanks());
        _File.pieces.push_back({Value(), name, true});
        Add(LineEnd());
    }

    std::string Name()
    {
        const std::string number = std::to_string(_Count++);
        return Below(_Random, 2) == 0 ? "n" + number : "quoted. " + number;
    }

    std::string Key(const std::string& iName)
    {
        if (iName[0] == 'n' && Below(_Random, 2) == 0)
            return iName;
        return Below(_Random, 2) == 0 ? '"' + iName + '"' : '\'' + iName + '\'';
    }

    std::string Value()
    {
        const std::string word = RandomWord(_Random);
        switch (Below(_Random, 9)) {
        case 0:
            return '\'' + word + " \\'";
        case 1:
            return "\"\"\"" + word + _Break + "\"" + word + "\\\\\"\"\"";
        case 2:
            return "\"\"\"" + _Break + _Break + word + "\"\"\"";
        case 3:
            return "'''" + word + _Break + "'" + word + "'''";
        case 4:
            return "'''" + _Break + word + _Break + "'''";
        case 5:
            return "1979-05-27T07:32:00Z";
        case 6:
            return "[ \"" + word + "\"," + _Break + " # comment" + _Break + " '" + word + "' ]";
        default:
            return '"' + word + "\\n\\u0000\\u00FF\\\\\"";
        }
    }

    void Table()
    {
        Add("# of the table" + _Break + "[table]" + LineEnd() + "n1 = 'x'" + LineEnd() +
            "[[list]]" + LineEnd());
    }

    Random _Random;
    GeneratedFile _File;
    std::string _Break;
    int _Count = 0;
};

unsigned FirstSeed()
{
    return 20240917;
}

} // namespace

TEST(ZORSettingRepositorySave, ChangesTheBytesOfTheValueAndNoOthers)
{
    struct Row {
        const char* before;
        const char* after; // of putting "new" into A
    };
    const Row rows[] = {
        // What stands around a value.
        {"A = \"old\"\n", "A = \"new\"\n"},
        {"A=\"old\"", "A=\"new\""},
        {"\t A \t=\t \"old\" \t\n", "\t A \t=\t \"new\" \t\n"},
        {"# A = \"old\"\n\nA = \"old\" # \"old\"\n# A\n",
         "# A = \"old\"\n\nA = \"new\" # \"old\"\n# A\n"},
        {"B = \"old\"\nA = \"old\"\nC = \"old\"\n", "B = \"old\"\nA = \"new\"\nC = \"old\"\n"},
        {"\"A\" = \"old\"\n", "\"A\" = \"new\"\n"},
        {"'A' = \"old\"\n", "'A' = \"new\"\n"},
        {"\"\\u0041\" = \"old\"\n", "\"\\u0041\" = \"new\"\n"},
        {"A = \"old\"\r\nB = 1\r\n", "A = \"new\"\r\nB = 1\r\n"},
        {"\xEF\xBB\xBF"
         "A = \"old\"\n",
         "\xEF\xBB\xBF"
         "A = \"new\"\n"},
        {"é.é = 1\n", nullptr},
        {"\"é\".A = 'é'\nA = \"old\" # é\n", "\"é\".A = 'é'\nA = \"new\" # é\n"},
        {"A = \"old\"\n[A.B]\n", nullptr},
        {"A = \"old\"\n[table]\nA = \"old\"\n", "A = \"new\"\n[table]\nA = \"old\"\n"},
        // How it is quoted.
        {"A = 'old'\n", "A = 'new'\n"},
        {"A = \"\"\"old\"\"\"\n", "A = \"\"\"new\"\"\"\n"},
        {"A = \"\"\"\nold\nold\"\"\"\n", "A = \"\"\"\nnew\"\"\"\n"},
        {"A = \"\"\"\r\nold\"\"\"\n", "A = \"\"\"\r\nnew\"\"\"\n"},
        {"A = '''old'''\n", "A = '''new'''\n"},
        {"A = '''\nold''' # ''' \n", "A = '''\nnew''' # ''' \n"},
        {"A = \"\"\"\"old\"\"\"\"\"\n", "A = \"\"\"new\"\"\"\n"},
        {"A = 8080 # port\n", "A = \"new\" # port\n"},
        {"A = 1979-05-27 07:32:00\n", "A = \"new\"\n"},
        {"A = true\n", "A = \"new\"\n"},
        {"A = [\"x\", 'y'] # list\n", "A = \"new\" # list\n"},
        {"A = [ # two\n 'A',\n 'y']\n", "A = \"new\"\n"},
    };
    for (const Row& row : rows)
        if (row.after)
            EXPECT_EQ(AfterPut(row.before, "A", "new"), row.after) << row.before;
        else
            EXPECT_TRUE(ErrorOf([&] { AfterPut(row.before, "A", "new"); })) << row.before;
}

TEST(ZORSettingRepositorySave, KeepsTheWayOfQuotingWhileItCanCarryTheText)
{
    struct Row {
        const char* before;
        const char* value;
        const char* after;
    };
    const Row rows[] = {
        {"'x'", "C:\\dux \"q\"\t#", "'C:\\dux \"q\"\t#'"},
        {"'x'", "", "''"},
        {"'x'", "it's", "\"it's\""},
        {"'x'", "a\nb", "\"a\\nb\""},
        {"'x'", "\x7F", "\"\\u007F\""},
        {"'x'", "\xFF", "\"\\u0000\\u00FF\""},
        {"'x'", "é", "'é'"},
        {"\"x\"", "\t\b\f\r\n\"\\\x01\x1F\x7F", "\"\\t\\b\\f\\r\\n\\\"\\\\\\u0001\\u001F\\u007F\""},
        {"\"x\"", "é日😀\xC3", "\"é日😀\\u0000\\u00C3\""},
        {"\"\"\"x\"\"\"", "a\nb\tc", "\"\"\"a\nb\tc\"\"\""},
        {"\"\"\"x\"\"\"", "\na", "\"\"\"\\na\"\"\""},
        {"\"\"\"\nx\"\"\"", "\na", "\"\"\"\n\na\"\"\""},
        {"\"\"\"x\"\"\"", "\"a\"\"b\"\"\"\"c\"", "\"\"\"\"a\"\"b\"\"\\\"\"c\\\"\"\"\""},
        {"\"\"\"x\"\"\"", "\r\xFF\\", "\"\"\"\\r\\u0000\\u00FF\\\\\"\"\""},
        {"\"\"\"x\"\"\"", "", "\"\"\"\"\"\""},
        {"\"\"\"x\r\ny\"\"\"", "a\nb\nc", "\"\"\"a\r\nb\r\nc\"\"\""},
        {"'''x'''", "it's\n\"it\"\\", "'''it's\n\"it\"\\'''"},
        {"'''x'''", "''a''", "'''''a'''''"},
        {"'''x'''", "'", "'''''''"},
        {"'''x'''", "", "''''''"},
        {"'''x'''", "a'''b", "\"a'''b\""},
        {"'''x'''", "\na", "\"\\na\""},
        {"'''\nx'''", "\na", "'''\n\na'''"},
        {"'''\r\nx'''", "a\nb", "'''\r\na\r\nb'''"},
        {"'''x'''", "\r", "\"\\r\""},
        {"8080", "8081", "\"8081\""},
    };
    for (const Row& row : rows) {
        const std::string before = std::string("A = ") + row.before + " # x\n";
        const std::string after = AfterPut(before, "A", row.value);
        EXPECT_EQ(after, std::string("A = ") + row.after + " # x\n") << before;
        const RepositorySite site;
        site.SetBytes(after);
        EXPECT_EQ(site.Get("A"), row.value) << after;
    }
}

TEST(ZORSettingRepositorySave, BreaksLinesInAMultiLineValueAsTheFileDoes)
{
    EXPECT_EQ(AfterPut("# x\r\nA = '''x'''\r\n", "A", "a\nb"), "# x\r\nA = '''a\r\nb'''\r\n");
    EXPECT_EQ(AfterPut("# x\nA = '''\r\nx'''\n", "A", "a\nb"), "# x\nA = '''\r\na\r\nb'''\n");
    EXPECT_EQ(AfterPut("A = '''x'''", "A", "a\nb"), "A = '''a\nb'''");
}

TEST(ZORSettingRepositorySave, ChangesOnlyTheItemsOfAListThatDiffer)
{
    EXPECT_EQ(After("A = [ 'one', # 1\n\t'two' # 2\n] # A\n", "A", {"one", "new"}),
              "A = [ 'one', # 1\n\t'new' # 2\n] # A\n");
    EXPECT_EQ(After("A = [80, 443,]\n", "A", {"80", "8443"}), "A = [80, \"8443\",]\n");
    EXPECT_EQ(After("A = [80, 443]\n", "A", {"80", "443", "x"}), "A = [\"80\", \"443\", \"x\"]\n");
    EXPECT_EQ(After("A = ['A', 'x']\n", "A", {"A", "x"}), "A = ['A', 'x']\n");
    EXPECT_EQ(After("A = 'x'\n", "A", {"B", "x"}), "A = [\"B\", \"x\"]\n");
    EXPECT_EQ(After("A = 'x'\n", "A", {"x"}), "A = [\"x\"]\n");
}

TEST(ZORSettingRepositorySave, PutsANewNameBehindTheLastOneAndAboveAnyTable)
{
    struct Row {
        const char* before;
        const char* after; // of putting "x" into N
    };
    const Row rows[] = {
        {"", "N = \"x\"\n"},
        {"\xEF\xBB\xBF", "\xEF\xBB\xBFN = \"x\"\n"},
        {"# head\n", "# head\nN = \"x\"\n"},
        {"# head", "# head\nN = \"x\"\n"},
        {"\n#", "\n#\nN = \"x\"\n"},
        {"A = \"1\"\n", "A = \"1\"\nN = \"x\"\n"},
        {"A = \"1\"", "A = \"1\"\nN = \"x\"\n"},
        {"A = \"1\"\r\n", "A = \"1\"\r\nN = \"x\"\r\n"},
        {"# x\r\nA = \"1\"", "# x\r\nA = \"1\"\r\nN = \"x\"\r\n"},
        {"A = \"1\" # one\n\n# end\n", "A = \"1\" # one\nN = \"x\"\n\n# end\n"},
        {"A = '''\n1\n'''\n\nB.C = 1\n[t]\n", "A = '''\n1\n'''\nN = \"x\"\n\nB.C = 1\n[t]\n"},
        {"A = [\n1\n]\n[t]\n", "A = [\n1\n]\nN = \"x\"\n[t]\n"},
        {"[t]\nA = \"1\"\n", "N = \"x\"\n[t]\nA = \"1\"\n"},
        {"# head\n\n# of t\n\t# too\n[t]\n", "# head\n\nN = \"x\"\n# of t\n\t# too\n[t]\n"},
        {"\xEF\xBB\xBF# of t\r\n[t]\r\n", "\xEF\xBB\xBFN = \"x\"\r\n# of t\r\n[t]\r\n"},
        {"\n\na.b = 1\n", "\n\nN = \"x\"\na.b = 1\n"},
        {"\n", "\nN = \"x\"\n"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(AfterPut(row.before, "N", "x"), row.after) << row.before;
}

TEST(ZORSettingRepositorySave, WritesAnyNameAsAKey)
{
    const std::pair<const char*, const char*> rows[] = {
        {"abc_XYZ-09", "abc_XYZ-09"}, {"12", "12"},       {"", "\"\""},
        {"a.b", "\"a.b\""},           {"a b", "\"a b\""}, {"é", "\"é\""},
        {"\"", "\"\\\"\""},           {"\n", "\"\\n\""},  {"\xFF", "\"\\u0000\\u00FF\""},
        {"[t]", "\"[t]\""},           {"#", "\"#\""},     {"=", "\"=\""},
    };
    for (const auto& [name, key] : rows)
        EXPECT_EQ(AfterPut("", name, "x"), std::string(key) + " = \"x\"\n");
}

TEST(ZORSettingRepositorySave, RemovesTheLinesOfAnAttribute)
{
    struct Row {
        const char* before;
        const char* after; // of removing A
    };
    const Row rows[] = {
        {"A = \"x\"\n", ""},
        {"A = \"x\"", ""},
        {"\xEF\xBB\xBF A = \"x\"\r\nB = 1\r\n", "\xEF\xBB\xBF"
                                                "B = 1\r\n"},
        {"# above\n \tA = \"x\" # beside\n# below\n", "# above\n# below\n"},
        {"B = 1\nA = \"x\"", "B = 1\n"},
        {"A = '''\nx\n''' # beside\nB = 1\n", "B = 1\n"},
        {"A = [ # one\n 'x',\n]\n\nB = 1\n", "\nB = 1\n"},
        {"B = 1\n", "B = 1\n"},
        {"[A]\n", "[A]\n"},
        {"A.b = 1\n", "A.b = 1\n"},
        {"[t]\nA = \"x\"\n", "[t]\nA = \"x\"\n"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(After(row.before, "A", {}), row.after) << row.before;
}

TEST(ZORSettingRepositorySave, MakesManyChangesAtOnce)
{
    const RepositorySite site;
    site.SetBytes("A = 'a' # 1\nB = 'b'\nC = 'c' # 3\nD = 'd'\n[t]\n");
    const auto settings = OpenSettings("site");
    Write(*settings, "E", {"E", "e"});
    Write(*settings, "C", {"C", "new"});
    settings->DelAttribute("D");
    settings->DelAttribute("B");
    Write(*settings, "F", {"f", "f"});
    Write(*settings, "A", {"A", "new"});
    settings->SaveRepository();
    EXPECT_EQ(site.Bytes(), "A = 'new' # 1\nC = 'new' # 3\nE = \"e\"\nF = [\"f\", \"f\"]\n[t]\n");
}

TEST(ZORSettingRepositorySave, LeavesEveryOtherByteOfGeneratedFilesAlone)
{
    for (unsigned seed = FirstSeed(); seed < FirstSeed() + 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Generator generator(seed);
        const GeneratedFile file = generator.File();
        const RepositorySite site;
        site.SetBytes(file.Bytes());
        ASSERT_EQ(site.List(), file.names) << file.Bytes();
        for (std::size_t i = 0; i < file.pieces.size(); ++i) {
            const Piece& value = file.pieces[i];
            if (!value.isValue)
                continue;
            const auto [first, before] = Read(*OpenSettings("site"), value.name);
            if (first != value.name) // a list: put as a value it becomes one
                continue;
            const std::string text = generator.Text();
            site.Put(value.name, text);
            ASSERT_EQ(site.Get(value.name), text) << site.Bytes();
            std::string head, tail;
            for (std::size_t j = 0; j < file.pieces.size(); ++j)
                (j < i ? head : tail) += j == i ? "" : file.pieces[j].bytes;
            const std::string after = site.Bytes();
            ASSERT_TRUE(after.starts_with(head)) << after;
            ASSERT_TRUE(after.ends_with(tail)) << after;

            // A text that keeps the way of quoting comes back to the same bytes.
            site.SetBytes(file.Bytes());
            site.Put(value.name, generator.Word());
            site.Put(value.name, before);
            if (value.bytes[0] == '"' || value.bytes[0] == '\'')
                ASSERT_EQ(site.Bytes(), file.Bytes());
            else
                site.SetBytes(file.Bytes());
        }
    }
}

TEST(ZORSettingRepositorySave, TakesOutWhatItPutIn)
{
    for (unsigned seed = FirstSeed(); seed < FirstSeed() + 100; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Generator generator(seed);
        const std::string bytes = generator.File().Bytes();
        const RepositorySite site;
        site.SetBytes(bytes);
        site.Put("new name", generator.Text());
        site.Remove("new name");
        const bool broken = bytes.empty() || bytes == kBom || bytes.ends_with('\n');
        if (broken)
            ASSERT_EQ(site.Bytes(), bytes);
        else
            ASSERT_TRUE(site.Bytes().starts_with(bytes)) << site.Bytes();
    }
}

TEST(ZORSettingRepositorySave, KeepsWhatAPlainModelKeepsAndStaysToml)
{
    for (unsigned seed = FirstSeed(); seed < FirstSeed() + 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Generator generator(seed);
        const RepositorySite site;
        site.SetBytes(generator.File().Bytes());
        std::vector<std::pair<std::string, Strings>> model;
        for (const std::string& name : site.List()) {
            const auto [first, second] = Read(*OpenSettings("site"), name);
            model.push_back({name, {first, second}});
        }
        const auto settings = OpenSettings("site");
        for (int step = 0; step < 60; ++step) {
            const bool known = !model.empty() && generator.Number(2) == 0;
            const std::string name =
                known ? model[generator.Number(model.size())].first : generator.Text();
            const auto place = std::find_if(model.begin(), model.end(),
                                            [&](const auto& each) { return each.first == name; });
            if (generator.Number(4) == 0) {
                settings->DelAttribute(name.c_str());
                if (place != model.end())
                    model.erase(place);
            } else {
                const Strings items = {generator.Number(2) == 0 ? name : generator.Text(),
                                       generator.Text()};
                Write(*settings, name, items);
                if (place == model.end())
                    model.push_back({name, items});
                else
                    place->second = items;
            }
            if (generator.Number(8) != 0)
                continue;
            settings->SaveRepository();
            ASSERT_TRUE(toml::parse(site.Bytes())) << site.Bytes();
            const auto again = OpenSettings("site");
            Strings names;
            for (const auto& [modelName, items] : model) {
                names.push_back(modelName);
                const auto [first, second] = Read(*again, modelName);
                ASSERT_EQ(Strings({first, second}), items) << site.Bytes();
            }
            Strings got = ListNames(*again);
            std::sort(got.begin(), got.end());
            std::sort(names.begin(), names.end());
            ASSERT_EQ(got, names);
        }
    }
}

TEST(ZORSettingRepositorySave, ReadsWhatAnotherReaderOfTomlReads)
{
    for (unsigned seed = FirstSeed(); seed < FirstSeed() + 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Generator generator(seed);
        const std::string bytes = generator.File().Bytes();
        const RepositorySite site;
        site.SetBytes(bytes);
        const auto settings = OpenSettings("site");
        const toml::parse_result parsed = toml::parse(bytes);
        ASSERT_TRUE(parsed) << bytes;
        for (const auto& [name, node] : parsed.table()) {
            const auto [first, second] = Read(*settings, std::string(name.str()));
            if (const auto* const text = node.as_string()) {
                std::string expected = text->get(); // \u0000\u00FF is the byte FF
                for (std::size_t at;
                     (at = expected.find(std::string("\0\xC3\xBF", 3))) != std::string::npos;)
                    expected.replace(at, 3, "\xFF");
                EXPECT_EQ(first, name.str());
                EXPECT_EQ(second, expected);
            } else if (const auto* const list = node.as_array();
                       list && !node.is_array_of_tables()) {
                EXPECT_EQ(first, list->get(0)->value_or(std::string()));
                EXPECT_EQ(second, list->get(1)->value_or(std::string()));
            } else
                EXPECT_EQ(first, node.is_value() ? std::string(name.str()) : "-");
        }
    }
}

TEST(ZORSettingRepositorySave, TellsAnyDamageThatAnotherReaderOfTomlTells)
{
    Random random(FirstSeed());
    for (unsigned seed = FirstSeed(); seed < FirstSeed() + 400; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::string bytes = Generator(seed).File().Bytes();
        if (bytes.empty())
            continue;
        static const std::string odd = "\"'\\[]{}=#.,\n\r\t a0-\x01\xFF";
        for (std::size_t left = 1 + Below(random, 3); left > 0; --left) {
            const std::size_t at = Below(random, bytes.size());
            switch (Below(random, 3)) {
            case 0:
                bytes[at] = odd[Below(random, odd.size())];
                break;
            case 1:
                bytes.insert(at, 1, odd[Below(random, odd.size())]);
                break;
            default:
                bytes.erase(at, 1 + Below(random, 3));
                bytes += ' ';
            }
        }
        const bool sound = toml::parse(bytes).succeeded();
        const RepositorySite site;
        site.SetBytes(bytes);
        const std::optional<std::string> error = ErrorOf([] { OpenSettings("site"); });
        ASSERT_TRUE(sound || error) << bytes;
        if (sound && error) {
            ASSERT_THAT(*error, HasSubstr("\\u0000 stands for nothing")) << bytes;
        }
    }
}
