#include "ZORDuxStrings.h"

#include "GuardedText.h"
#include "NewText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace
{
using Result = std::optional<std::string>;
const Result kNull;
constexpr unsigned kLargest = 4294967295U;

// Sets the word separator and puts the blank back.
class ScopedSeparator
{
public:
    explicit ScopedSeparator(char iSeparator) { setwsep(iSeparator); }
    ~ScopedSeparator() { setwsep(' '); }
    ScopedSeparator(const ScopedSeparator&) = delete;
    ScopedSeparator& operator=(const ScopedSeparator&) = delete;
};

std::string Repeat(const std::string& iText, std::size_t iTimes)
{
    std::string result;
    for (std::size_t i = 0; i < iTimes; ++i)
        result += iText;
    return result;
}
} // namespace

// It has to stand first: what the others set stays.
TEST(getwsep, TellsABlankForBothAtLoad)
{
    EXPECT_EQ(getwsep(0), ' ');
    EXPECT_EQ(getwsep(-1), ' ');
}

TEST(Words, AreCountedFoundAndJoined)
{
    const char* const text = " one  two three ";
    EXPECT_EQ(Take(word(text, 2)), "two");
    EXPECT_EQ(wordlen(text, 3), 5);
    EXPECT_EQ(wordpos("three", text, 1), 3);
    EXPECT_EQ(Take(subword(text, 1, 2)), "one two");
    EXPECT_STREQ(xword(text, 3), "three");
}

TEST(getwsep, TellsTheCurrentSeparatorAndTheOneBefore)
{
    const ScopedSeparator blank(' ');
    EXPECT_EQ(getwsep(0), ' ');
    setwsep(',');
    EXPECT_EQ(getwsep(0), ',');
    EXPECT_EQ(getwsep(-1), ' ');
    EXPECT_EQ(getwsep(5), ',');
    EXPECT_EQ(getwsep(-5), ' ');
    setwsep(';');
    EXPECT_EQ(getwsep(-1), ',');
    setwsep(';');
    EXPECT_EQ(getwsep(-1), ';');
}

TEST(setwsep, GivesTheSeparatorAsAStringThatFollowsIt)
{
    const ScopedSeparator blank(' ');
    const char* const separator = setwsep(',');
    EXPECT_STREQ(separator, ",");
    EXPECT_EQ(setwsep('\xE9'), separator);
    EXPECT_STREQ(separator, "\xE9");
    EXPECT_EQ(Take(strip("\xE9z", "L", separator)), "z");
}

TEST(word, GivesTheWordOfANumberOrNull)
{
    const struct {
        const char* text;
        unsigned number;
        Result result;
    } rows[] = {
        {" one  two", 1, "one"},
        {" one  two", 2, "two"},
        {" one  two", 3, kNull},
        {" one  two", 0, kNull},
        {" one", kLargest, kNull},
        {"one", 1, "one"},
        {"one ", 1, "one"},
        {"one ", 2, kNull},
        {"   ", 1, kNull},
        {"", 1, kNull},
        {"", 0, kNull},
        {nullptr, 1, kNull},
        {"a,b\tc", 1, "a,b\tc"},
        {"\xE9\xFF z", 1, "\xE9\xFF"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(word(row.text, row.number)), row.result) << row.text << ' ' << row.number;
}

TEST(word, SplitsAtTheCurrentSeparatorAlone)
{
    const ScopedSeparator comma(',');
    EXPECT_EQ(Take(word("a,b,,c", 3)), "c");
    EXPECT_EQ(Take(word(" a b ,c", 1)), " a b ");
    const ScopedSeparator high('\xE9');
    EXPECT_EQ(Take(word("\xE9one\xE9two", 2)), "two");
}

TEST(Words, AreTheWholeTextWhenTheSeparatorIsNul)
{
    const ScopedSeparator none('\0');
    EXPECT_EQ(Take(word(" one two", 1)), " one two");
    EXPECT_EQ(Take(word(" one two", 2)), kNull);
    EXPECT_EQ(wordlen(" one two", 1), 8);
    EXPECT_EQ(wordlen("", 1), 0);
    EXPECT_EQ(Take(subword(" one two", 1, 5)), " one two");
    EXPECT_EQ(wordpos(" one two", " one two", 1), 1);
    EXPECT_EQ(wordpos("one", " one two", 1), 0);
}

TEST(xword, GivesTheWordOfANumberInItsBuffer)
{
    const char* const first = xword(" one  two", 1);
    EXPECT_STREQ(first, "one");
    EXPECT_EQ(xword(" one  two", 2), first);
    EXPECT_STREQ(first, "two");
    EXPECT_EQ(xword(" one  two", 3), nullptr);
    EXPECT_EQ(xword("   ", 1), nullptr);
    EXPECT_EQ(xword("one", kLargest), nullptr);
    EXPECT_EQ(xword("one", 0), nullptr);
    EXPECT_EQ(xword("", 0), nullptr);
    EXPECT_EQ(xword(nullptr, 1), nullptr);
    EXPECT_STREQ(first, "two");
}

TEST(xword, GivesTheEmptyStringForAnEmptyText)
{
    char* const buffer = xword("one", 1);
    EXPECT_EQ(xword("", 1), buffer);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(xword("", 7), buffer);
}

TEST(xword, CutsAWordToItsFirst255Characters)
{
    for (const std::size_t length : {254U, 255U, 256U, 300U, 5000U}) {
        std::string text = " ";
        for (std::size_t i = 0; i < length; ++i)
            text += static_cast<char>('a' + i % 26);
        EXPECT_EQ(xword(text.c_str(), 1), text.substr(1, 255)) << length;
        EXPECT_EQ(xword((text + " next").c_str(), 1), text.substr(1, 255)) << length;
    }
}

TEST(xword, TakesATextInItsOwnBuffer)
{
    const std::string two = Repeat("two-", 50);
    char* const buffer = xword(("one," + two).c_str(), 1);
    const ScopedSeparator comma(',');
    EXPECT_EQ(xword(buffer, 2), two);
}

TEST(wordlen, MeasuresAWordUpToTheSeparatorOrTheEnd)
{
    const struct {
        const char* text;
        int number;
        int length;
    } rows[] = {
        {"ab c", 1, 2},
        {"ab c", 2, 1},
        {"ab cde", 2, 3},
        {"ab cde ", 2, 3},
        {"ab c", 3, 0},
        {"ab c", 0, -1},
        {"ab c", -1, 0},
        {"", 1, 0},
        {"", 0, -1},
        {"  ", 1, 0},
        {nullptr, 1, 0},
        {nullptr, 0, -1},
        {"ab c", -2147483647 - 1, 0},
        {"ab c", 2147483647, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(wordlen(row.text, row.number), row.length) << row.text << ' ' << row.number;
}

TEST(subword, JoinsWordsByOneSeparator)
{
    const struct {
        const char* text;
        unsigned first;
        unsigned count;
        Result result;
    } rows[] = {
        {" one  two", 1, 2, "one two"},
        {" one  two", 1, 1, "one"},
        {" one  two", 2, 1, "two"},
        // As many words as there are.
        {" one  two ", 1, 3, "one two"},
        {" one  two ", 2, 9, "two"},
        {"one   two three    ", 2, 9, "two three"},
        {" one  two", 3, 1, kNull},
        {" one  two", 0, 1, kNull},
        {" one  two", 1, 0, kNull},
        {" one  two", kLargest, 1, kNull},
        // The number of the last word is 4294967295, then 0 and 1.
        {"one two three", 1, kLargest, "one two three"},
        {"one two three", 2, kLargest, "two"},
        {"one two three", 3, kLargest, "three"},
        {"   ", 1, 1, kNull},
        {"", 1, 1, kNull},
        {nullptr, 1, 1, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Take(subword(row.text, row.first, row.count)), row.result)
            << row.text << ' ' << row.first << ' ' << row.count;
}

TEST(subword, JoinsByTheSeparatorCurrentAtTheCall)
{
    const ScopedSeparator comma(',');
    EXPECT_EQ(Take(subword(",,a b,,c,d", 1, 2)), "a b,c");
}

TEST(wordpos, FindsAWordFromANumberOn)
{
    const struct {
        const char* phrase;
        const char* text;
        unsigned start;
        int number;
    } rows[] = {
        {"two", " one  two", 1, 2},
        {"two", " one  two", 2, 2},
        {"two", " one  two", 3, 0},
        {"one", "one two one", 1, 1},
        {"one", "one two one", 2, 3},
        {"one", "one two one", 4, 0},
        {"one", "one two one", kLargest, 0},
        {"one", "one", 0, -1},
        {nullptr, "one", 0, -1},
        {nullptr, "one", 1, 0},
        {"one", nullptr, 1, 0},
        {"one", nullptr, 0, -1},
        // Whole words only.
        {"one", "ones one", 1, 2},
        {"one", "on one", 1, 2},
        {"one", "bone one", 1, 2},
        {"ones", "one", 1, 0},
        // Separators go from one end of the phrase, the leading one if there are any there.
        {"two  ", "one two", 1, 2},
        {"  two", "one two", 1, 2},
        {" two ", "one two", 1, 0},
        // No word is empty or has a separator in it.
        {"one two", "one two", 1, 0},
        {"", "one two", 1, 0},
        {" ", "one two", 1, 0},
        {"", "", 1, 0},
        {"one", "", 1, 0},
        {"\xE9", "e \xE9", 1, 2},
    };
    for (const auto& row : rows)
        EXPECT_EQ(wordpos(row.phrase, row.text, row.start), row.number)
            << row.phrase << " in " << row.text << " from " << row.start;
}

TEST(wordpos, FollowsTheSeparator)
{
    const ScopedSeparator comma(',');
    EXPECT_EQ(wordpos("c d,,", "a,b,,c d", 1), 3);
    EXPECT_EQ(wordpos(",c", "a,b,,c", 2), 3);
}

// Word boundaries are found in blocks of 64 bytes: every way for words and separators to lie across
// them, at every alignment.
TEST(Words, AreTheSameAtEveryAddress)
{
    GuardedText storage(1024);
    const std::string lead = Repeat("ab ", 20);
    for (std::size_t shift = 0; shift < 130; ++shift) {
        const std::string text = lead + "needle" + std::string(shift % 70 + 1, ' ') + "last" +
                                 std::string(shift % 3, ' ');
        const char* const placed = storage.AtBegin(std::string(shift, '#') + text) + shift;
        EXPECT_EQ(Take(word(placed, 21)), "needle") << shift;
        EXPECT_EQ(Take(word(placed, 22)), "last") << shift;
        EXPECT_EQ(wordlen(placed, 22), 4) << shift;
        EXPECT_EQ(wordlen(placed, 23), 0) << shift;
        EXPECT_EQ(wordpos("needle", placed, 3), 21) << shift;
        EXPECT_EQ(wordpos("last", placed, 22), 22) << shift;
        EXPECT_EQ(Take(subword(placed, 20, 9)), "ab needle last") << shift;
    }
}

// Only the part of a text that decides may be touched: what follows here is no text at all.
TEST(Words, AreFoundWithoutReadingOn)
{
    GuardedText storage(1024);
    for (std::size_t length = 1; length < 150; ++length) {
        const std::string found(length, 'x');
        const char* const text = storage.UnendedAtEnd("one " + found + " ");
        EXPECT_EQ(Take(word(text, 2)), found);
        EXPECT_EQ(xword(text, 2), found);
        EXPECT_EQ(wordlen(text, 2), static_cast<int>(length));
        EXPECT_EQ(wordpos(found.c_str(), text, 2), 2);
    }
    const std::string longest(255, 'x');
    EXPECT_EQ(xword(storage.UnendedAtEnd("one " + longest), 2), longest);
}

TEST(Words, MayBeAMillion)
{
    constexpr unsigned kCount = 1000000;
    std::string text;
    for (unsigned number = 1; number <= kCount; ++number)
        text += std::to_string(number) + ' ';
    EXPECT_EQ(Take(word(text.c_str(), kCount)), "1000000");
    EXPECT_EQ(wordpos("999999", text.c_str(), 1), 999999);
    const auto joined = Take(subword(text.c_str(), 1, kCount));
    text.pop_back();
    EXPECT_TRUE(joined == text);
}

TEST(Words, AreSplitByTwoThreadsAtOnce)
{
    const auto split = [](const char* iText, unsigned iNumber, const char* iWord) {
        for (int i = 0; i < 2000; ++i) {
            ASSERT_EQ(Take(word(iText, iNumber)), iWord);
            ASSERT_EQ(Take(subword(iText, iNumber, 1)), iWord);
            ASSERT_EQ(wordlen(iText, static_cast<int>(iNumber)),
                      static_cast<int>(std::strlen(iWord)));
            ASSERT_EQ(wordpos(iWord, iText, 1), static_cast<int>(iNumber));
        }
    };
    std::thread other(split, "one two three four", 4, "four");
    split("uno  due  tre", 2, "due");
    other.join();
}

TEST(Words, LeaveACallersOwnTokensAlone)
{
    char line[] = "a b;c d;e f";
    std::string seconds;
    for (char* part = std::strtok(line, ";"); part; part = std::strtok(nullptr, ";"))
        seconds += *Take(word(part, 2)) + *Take(subword(part, 2, 1)) +
                   std::to_string(wordpos("d", part, 1));
    EXPECT_EQ(seconds, "bb0dd2ff0");
}
