#include "ZORDuxStrings.h"

#include "NewText.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <string>

namespace
{
using Result = std::optional<std::string>;
const Result kNull;
constexpr unsigned kLargest = 4294967295U;
} // namespace

TEST(ZORDuxStrings, CutPadAndSearchText)
{
    const NewText name(word("plate  bracket bolt", 2));
    EXPECT_STREQ(name.get(), "bracket");
    EXPECT_EQ(pos("rack", name.get(), 1), 2);
    EXPECT_EQ(Take(pad(name.get(), 10, '.')), "bracket...");
    EXPECT_EQ(Take(left(name.get(), 4)), "brac");
    EXPECT_STREQ(right(name.get(), 3), "ket");
}

TEST(ZORDuxStrings, CountPositionsInBytes)
{
    EXPECT_EQ(pos("b", "\xC3\xA9-b", 1), 4);
    EXPECT_EQ(Take(left("\xC3\xA9-b", 1)), "\xC3");
}

TEST(left, GivesTheFirstCharactersOrNull)
{
    const struct {
        const char* text;
        unsigned count;
        Result result;
    } rows[] = {
        {"abc", 1, "a"},          {"abc", 3, "abc"}, {"abc", 4, kNull}, {"abc", 0, kNull},
        {"abc", kLargest, kNull}, {"", 0, kNull},    {"", 1, kNull},    {nullptr, 1, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(left(row.text, row.count)), row.result) << row.text << ' ' << row.count;
}

TEST(right, PointsIntoItsArgument)
{
    const char* const text = "abc";
    EXPECT_EQ(right(text, 1), text + 2);
    EXPECT_EQ(right(text, 3), text);
}

TEST(right, GivesNullForNoCharactersAndForMoreThanThereAre)
{
    EXPECT_EQ(right("abc", 0), nullptr);
    EXPECT_EQ(right("abc", 4), nullptr);
    EXPECT_EQ(right("abc", kLargest), nullptr);
    EXPECT_EQ(right("", 0), nullptr);
    EXPECT_EQ(right("", 1), nullptr);
    EXPECT_EQ(right(nullptr, 1), nullptr);
}

TEST(substr, GivesTheMiddleOrNull)
{
    const struct {
        const char* text;
        unsigned start;
        unsigned count;
        Result result;
    } rows[] = {
        {"abcdef", 2, 3, "bcd"},
        {"abcdef", 1, 6, "abcdef"},
        {"abcdef", 6, 1, "f"},
        // Beyond the end: the start, the count, or only both together.
        {"abcdef", 7, 1, kNull},
        {"abcdef", 1, 7, kNull},
        {"abcdef", 2, 6, kNull},
        {"abcdef", 6, 2, kNull},
        {"abcdef", 0, 1, kNull},
        {"abcdef", 1, 0, kNull},
        {"abcdef", 0, 0, kNull},
        // Sums that wrap around: to 1, to 0, to 2.
        {"abcdef", kLargest, 3, kNull},
        {"abcdef", 2, kLargest, kNull},
        {"abcdef", 4, kLargest, kNull},
        {"abcdef", kLargest, kLargest, kNull},
        {"", 1, 1, kNull},
        {nullptr, 1, 1, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(substr(row.text, row.start, row.count)), row.result)
            << row.text << ' ' << row.start << ' ' << row.count;
}

TEST(insert, PutsTextAfterSoManyCharacters)
{
    const struct {
        const char* what;
        const char* into;
        unsigned after;
        Result result;
    } rows[] = {
        {"XY", "abc", 1, "aXYbc"},  {"XY", "abc", 0, "XYabc"},      {"XY", "abc", 3, "abcXY"},
        {"XY", "abc", 4, kNull},    {"XY", "abc", kLargest, kNull}, {"XY", "", 0, "XY"},
        {"XY", "", 1, kNull},       {"", "abc", 2, "abc"},          {"", "", 0, ""},
        {nullptr, "abc", 1, kNull}, {"XY", nullptr, 0, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(insert(row.what, row.into, row.after)), row.result)
            << row.what << ' ' << row.into << ' ' << row.after;
}

TEST(insert, TakesOneTextForBoth)
{
    const char* const text = "abc";
    EXPECT_EQ(Take(insert(text, text, 1)), "aabcbc");
    EXPECT_EQ(Take(insert(text + 1, text, 3)), "abcbc");
}

TEST(overly, WritesOverTheTargetAndPastItsEnd)
{
    const struct {
        const char* what;
        const char* target;
        unsigned at;
        Result result;
    } rows[] = {
        {"XY", "abcd", 1, "XYcd"},
        {"XY", "abcd", 2, "aXYd"},
        {"XY", "abcd", 3, "abXY"},
        {"XY", "abcd", 4, "abcXY"},
        {"XY", "abcd", 5, kNull},
        {"XY", "abcd", 0, kNull},
        {"XY", "abcd", kLargest, kNull},
        {"VWXYZ", "ab", 1, "VWXYZ"},
        {"", "abcd", 2, "abcd"},
        {"XY", "", 1, kNull},
        {"XY", "", 0, kNull},
        {"", "", 1, kNull},
        {nullptr, "abcd", 1, kNull},
        {"XY", nullptr, 1, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(overly(row.what, row.target, row.at)), row.result)
            << row.what << ' ' << row.target << ' ' << row.at;
}

TEST(pad, FillsUpToALength)
{
    const struct {
        const char* text;
        unsigned count;
        Result result;
    } rows[] = {
        {"ab", 4, "ab**"}, {"ab", 3, "ab*"}, {"ab", 2, "ab"}, {"ab", 1, kNull},
        {"ab", 0, kNull},  {"", 2, "**"},    {"", 0, ""},     {nullptr, 2, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(pad(row.text, row.count, '*')), row.result) << row.text << ' ' << row.count;
}

TEST(pad, FillsWithAnyCharacter)
{
    EXPECT_EQ(Take(pad("ab", 4, '\xFF')), "ab\xFF\xFF");
    const NewText filled(pad("ab", 4, '\0'));
    EXPECT_EQ(std::memcmp(filled.get(), "ab\0\0", 5), 0);
}

TEST(strip, RemovesACharacterFromTheEndsThatTheModeNames)
{
    const struct {
        const char* text;
        const char* mode;
        const char* character;
        Result result;
    } rows[] = {
        {"  a b  ", "L", " ", "a b  "},
        {"  a b  ", "T", " ", "  a b"},
        // Both ends, but the trailing ones only where there are no leading ones.
        {"  a  ", "B", " ", "a  "},
        {" a ", "B", " ", "a "},
        {"a  ", "B", " ", "a"},
        {"  a", "B", " ", "a"},
        {"a", "B", " ", "a"},
        // Any other letter, and none, is the trailing mode; only the first letter counts.
        {" a ", "x", " ", " a"},
        {" a ", "l", " ", " a"},
        {" a ", "b", " ", " a"},
        {" a ", "", " ", " a"},
        {" a ", "LT", " ", "a "},
        // Only the first character counts, and it may be any.
        {"xyaxy", "L", "xy", "yaxy"},
        {"xyayx", "T", "xy", "xyay"},
        {"\xE9\xE9z\xE9", "L", "\xE9", "z\xE9"},
        {" a ", "L", "x", " a "},
        {" a ", "T", "x", " a "},
        // No character at all strips nothing.
        {" a ", "L", "", " a "},
        {" a ", "B", "", " a "},
        {" a ", "T", "", " a "},
        // Nothing but the character.
        {"   ", "L", " ", ""},
        {"   ", "T", " ", ""},
        {"   ", "B", " ", ""},
        {" ", "B", " ", ""},
        {"", "L", " ", ""},
        {"", "T", " ", ""},
        {"", "B", " ", ""},
        {"", "B", "", ""},
        {nullptr, "B", " ", kNull},
        {"a", nullptr, " ", kNull},
        {"a", "B", nullptr, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(strip(row.text, row.mode, row.character)), row.result)
            << row.text << ' ' << row.mode << ' ' << row.character;
}

TEST(cswap, ReplacesFromAPositionOnAndCounts)
{
    const struct {
        const char* text;
        char from;
        char to;
        unsigned start;
        unsigned count;
        const char* changed;
    } rows[] = {
        {"banana", 'a', 'b', 3, 2, "banbnb"},
        {"banana", 'a', 'b', 1, 3, "bbnbnb"},
        {"banana", 'a', 'b', 6, 1, "bananb"},
        {"banana", 'a', 'b', 7, 0, "banana"},
        {"banana", 'a', 'b', 0, 0, "banana"},
        {"banana", 'a', 'b', kLargest, 0, "banana"},
        {"banana", 'x', 'b', 1, 0, "banana"},
        {"banana", 'a', 'a', 1, 3, "banana"},
        {"b\xE9n\xE9", '\xE9', 'e', 1, 2, "bene"},
        {"banana", '\0', 'x', 1, 0, "banana"},
        {"", 'a', 'b', 1, 0, ""},
        {"", 'a', 'b', 0, 0, ""},
    };
    for (const auto& row : rows) {
        std::string text = row.text;
        EXPECT_EQ(cswap(row.from, row.to, text.data(), row.start), row.count)
            << row.text << ' ' << row.start;
        EXPECT_STREQ(text.c_str(), row.changed) << row.text << ' ' << row.start;
    }
    EXPECT_EQ(cswap('a', 'b', nullptr, 1), 0U);
    EXPECT_EQ(cswap('a', 'b', nullptr, 0), 0U);
}

TEST(cswap, ReplacesUpToTheOldEndWhenItWritesNul)
{
    char text[] = "banana";
    EXPECT_EQ(cswap('n', '\0', text, 1), 2U);
    EXPECT_EQ(std::string(text, sizeof text), std::string("ba\0a\0a\0", 7));
}

namespace
{
// Puts the locale of the process back.
class ScopedLocale
{
public:
    ScopedLocale() : _Before(std::setlocale(LC_ALL, nullptr)) {}
    ~ScopedLocale() { std::setlocale(LC_ALL, _Before.c_str()); }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;

private:
    std::string _Before;
};

void ExpectCasesOfAllBytes()
{
    std::string all;
    for (int c = 1; c < 256; ++c)
        all += static_cast<char>(c);
    std::string low = all;
    std::string up = all;
    ASSERT_EQ(lower(low.data()), low.data());
    ASSERT_EQ(upper(up.data()), up.data());
    for (int c = 1; c < 256; ++c) {
        const auto at = static_cast<std::size_t>(c - 1);
        EXPECT_EQ(static_cast<unsigned char>(low[at]), std::tolower(c));
        EXPECT_EQ(static_cast<unsigned char>(up[at]), std::toupper(c));
    }
}
} // namespace

TEST(lowerAndUpper, ChangeEveryByteAsTheLocaleSays)
{
    const ScopedLocale before;
    ExpectCasesOfAllBytes();
    ASSERT_NE(std::setlocale(LC_ALL, "C.utf8"), nullptr);
    ExpectCasesOfAllBytes();
}

TEST(lowerAndUpper, ChangeHighBytesInASingleByteLocale)
{
    const ScopedLocale before;
    const ScopedDirectory locales;
    const ScopedEnvironment path("LOCPATH", locales.Path());
    const std::string make =
        "localedef -i de_DE -f ISO-8859-1 " + locales / "de_DE.ISO-8859-1" + " 2>&1";
    if (std::system(make.c_str()) != 0 || !std::setlocale(LC_ALL, "de_DE.ISO-8859-1"))
        GTEST_SKIP() << "no single-byte locale can be made here";
    char text[] = "\xC4pfel \xFC";
    EXPECT_STREQ(lower(text), "\xE4pfel \xFC");
    EXPECT_STREQ(upper(text), "\xC4PFEL \xDC");
    ExpectCasesOfAllBytes();
}

TEST(lowerAndUpper, LeaveAnEmptyTextAndTakeNull)
{
    char empty[] = "";
    EXPECT_EQ(lower(empty), empty);
    EXPECT_EQ(upper(empty), empty);
    EXPECT_STREQ(empty, "");
    EXPECT_EQ(lower(nullptr), nullptr);
    EXPECT_EQ(upper(nullptr), nullptr);
}

TEST(qstrip, RemovesBlanksAtBothEndsInPlace)
{
    const struct {
        const char* text;
        const char* stripped;
    } rows[] = {
        {"  a b  ", "a b"},  {"a", "a"},   {" a", "a"}, {"a ", "a"},
        {"\ta\n ", "\ta\n"}, {"    ", ""}, {" ", ""},   {"", ""},
    };
    for (const auto& row : rows) {
        std::string text = row.text;
        EXPECT_EQ(qstrip(text.data()), text.data());
        EXPECT_STREQ(text.c_str(), row.stripped) << '"' << row.text << '"';
    }
    EXPECT_EQ(qstrip(nullptr), nullptr);
}

TEST(qstrip, DoesNotWriteToATextWithoutBlanks)
{
    for (const char* literal : {"a b", ""})
        EXPECT_EQ(qstrip(const_cast<char*>(literal)), literal);
}

TEST(pos, FindsTextFromAPositionOn)
{
    const struct {
        const char* needle;
        const char* hay;
        unsigned start;
        int result;
    } rows[] = {
        {"cd", "abcdcd", 1, 3},
        {"cd", "abcdcd", 3, 3},
        {"cd", "abcdcd", 4, 5},
        {"cd", "abcdcd", 6, 0},
        {"cd", "abcdcd", 7, 0},
        // Far behind the end.
        {"cd", "abcdcd", 8, 0},
        {"cd", "abcdcd", kLargest, 0},
        {"cd", "abcdcd", 0, -1},
        {"aab", "aaab", 1, 2},
        {"abcdcd", "abcdcd", 1, 1},
        {"abcdcdx", "abcdcd", 1, 0},
        {"\xE9", "a\xE9", 1, 2},
        // The empty needle is nowhere.
        {"", "abcdcd", 1, 0},
        {"", "abcdcd", 7, 0},
        {"", "", 1, 0},
        {"a", "", 1, 0},
        {"", "abc", 0, -1},
        {nullptr, "abc", 1, -1},
        {"abc", nullptr, 1, -1},
        {nullptr, nullptr, 0, -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(pos(row.needle, row.hay, row.start), row.result)
            << row.needle << ' ' << row.hay << ' ' << row.start;
}
