#include "ZORDuxStringManagement.h"

#include "NewText.h"
#include "ZORDuxStrings.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{
using Result = std::optional<std::string>;
const Result kNull;
} // namespace

TEST(ZORDuxStringManagement, WorksWithTheWordsOfAString)
{
    ZORDuxStringManagement strings;
    const ZORUnicodeString line = " one  two three ";
    const ZORUnicodeString two = "two";
    EXPECT_EQ(Take(strings.Word(&line, 2)), "two");
    EXPECT_EQ(strings.WordLen(&line, 3), 5);
    EXPECT_EQ(strings.WordPos(&two, &line, 1), 2);
    EXPECT_EQ(Take(strings.SubWord(&line, 1, 2)), "one two");
    setwsep(',');
    const ZORUnicodeString list = "a,b,,c";
    EXPECT_EQ(Take(strings.Word(&list, 3)), "c");
    EXPECT_EQ(Take(strings.SubWord(&list, 2, 9)), "b,c");
    setwsep(' ');
}

TEST(ZORDuxStringManagement, FindsAndCutsByPosition)
{
    ZORDuxStringManagement strings;
    const ZORUnicodeString text = "abcdcd";
    const ZORUnicodeString needle = "cd";
    EXPECT_EQ(strings.Pos(&needle, &text, 1), 3);
    EXPECT_EQ(strings.Pos(&needle, &text, 4), 5);
    EXPECT_EQ(strings.Pos(&needle, &text, 6), 0);
    EXPECT_EQ(Take(strings.SubStr(&text, 2, 3)), "bcd");
    EXPECT_EQ(Take(strings.SubStr(&text, 2, 6)), kNull);
}

TEST(ZORDuxStringManagement, PointsIntoTheStringItself)
{
    ZORUnicodeString text = "abc";
    EXPECT_EQ(ZORDuxStringManagement().Right(&text, 1), text.ConvertToChar() + 2);
    EXPECT_EQ(ZORDuxStringManagement().Right(&text, 3), text.ConvertToChar());
    EXPECT_EQ(ZORDuxStringManagement().Right(&text, 4), nullptr);
    EXPECT_EQ(ZORDuxStringManagement().Right(&text, 0), nullptr);
}

TEST(ZORDuxStringManagement, ChangesAStringInPlace)
{
    ZORUnicodeString text = "  plate of a kind too long to be short  ";
    EXPECT_EQ(ZORDuxStringManagement().QStrip(&text), &text);
    EXPECT_EQ(text, "plate of a kind too long to be short");
    EXPECT_EQ(ZORDuxStringManagement().Upper(&text), &text);
    EXPECT_EQ(text, "PLATE OF A KIND TOO LONG TO BE SHORT");
    EXPECT_EQ(text.GetLengthInChar(), 36);
}

TEST(ZORDuxStringManagement, LeavesAnEmptyStringEmpty)
{
    ZORUnicodeString text;
    EXPECT_EQ(ZORDuxStringManagement().Upper(&text), &text);
    EXPECT_EQ(ZORDuxStringManagement().QStrip(&text), &text);
    EXPECT_EQ(text, "");
    ZORUnicodeString blanks = "   ";
    EXPECT_EQ(*ZORDuxStringManagement().QStrip(&blanks), "");
}

TEST(ZORDuxStringManagement, StripsByTheFirstLettersOfModeAndCharacter)
{
    ZORDuxStringManagement strings;
    const ZORUnicodeString both = "  a  ";
    const ZORUnicodeString trailing = "a  ";
    EXPECT_EQ(Take(strings.Strip(&both, "B", " ")), "a  ");
    EXPECT_EQ(Take(strings.Strip(&trailing, "Both", " x")), "a");
    EXPECT_EQ(Take(strings.Strip(&both, "L", " ")), "a  ");
    EXPECT_EQ(Take(strings.Strip(&both, "T", " ")), "  a");
    EXPECT_EQ(Take(strings.Strip(&both, "", " ")), "  a");
    EXPECT_EQ(Take(strings.Strip(&both, "L", "")), "  a  ");
    EXPECT_EQ(both, "  a  ");
}

TEST(ZORDuxStringManagement, CountsTheBytesOfTheText)
{
    ZORDuxStringManagement strings;
    ZORUnicodeString text = "\xC3\xA9t\xC3\xA9 z";
    const ZORUnicodeString needle = "t";
    EXPECT_EQ(strings.Pos(&needle, &text, 1), 3);
    EXPECT_EQ(strings.WordLen(&text, 1), 5);
    EXPECT_EQ(Take(strings.SubStr(&text, 2, 2)), "\xA9t");
    EXPECT_STREQ(strings.Right(&text, 3), "\xA9 z");
    strings.Upper(&text);
    EXPECT_EQ(text, "\xC3\xA9T\xC3\xA9 Z");
}

TEST(ZORDuxStringManagement, TakesNegativeNumbersAsVeryLargeOnes)
{
    ZORDuxStringManagement strings;
    ZORUnicodeString text = "one two three";
    const ZORUnicodeString one = "one";
    EXPECT_EQ(strings.Pos(&one, &text, -1), 0);
    EXPECT_EQ(strings.WordPos(&one, &text, -1), 0);
    EXPECT_EQ(strings.WordLen(&text, -1), 0);
    EXPECT_EQ(Take(strings.Word(&text, -1)), kNull);
    EXPECT_EQ(Take(strings.SubStr(&text, -1, 1)), kNull);
    EXPECT_EQ(Take(strings.SubStr(&text, 1, -1)), kNull);
    EXPECT_EQ(Take(strings.SubWord(&text, -1, 1)), kNull);
    EXPECT_EQ(strings.Right(&text, -1), nullptr);
    // As many words as there are, and a sum that wraps around.
    EXPECT_EQ(Take(strings.SubWord(&text, 1, -1)), "one two three");
    EXPECT_EQ(Take(strings.SubWord(&text, 2, -1)), "two");
}

TEST(ZORDuxStringManagement, AnswersZeroAsTheFunctionsDo)
{
    ZORDuxStringManagement strings;
    ZORUnicodeString text = "one two";
    EXPECT_EQ(strings.Pos(&text, &text, 0), -1);
    EXPECT_EQ(strings.WordPos(&text, &text, 0), -1);
    EXPECT_EQ(strings.WordLen(&text, 0), -1);
    EXPECT_EQ(Take(strings.Word(&text, 0)), kNull);
    EXPECT_EQ(Take(strings.SubWord(&text, 0, 1)), kNull);
    EXPECT_EQ(Take(strings.SubWord(&text, 1, 0)), kNull);
    EXPECT_EQ(Take(strings.SubStr(&text, 0, 1)), kNull);
    EXPECT_EQ(Take(strings.SubStr(&text, 1, 0)), kNull);
}

TEST(ZORDuxStringManagement, PassesNullOn)
{
    ZORDuxStringManagement strings;
    const ZORUnicodeString text = "one";
    EXPECT_EQ(strings.Pos(nullptr, &text, 1), -1);
    EXPECT_EQ(strings.Pos(&text, nullptr, 1), -1);
    EXPECT_EQ(strings.WordLen(nullptr, 1), 0);
    EXPECT_EQ(strings.WordLen(nullptr, 0), -1);
    EXPECT_EQ(strings.WordPos(nullptr, &text, 1), 0);
    EXPECT_EQ(strings.WordPos(&text, nullptr, 1), 0);
    EXPECT_EQ(strings.WordPos(nullptr, &text, 0), -1);
    EXPECT_EQ(strings.Word(nullptr, 1), nullptr);
    EXPECT_EQ(strings.SubWord(nullptr, 1, 1), nullptr);
    EXPECT_EQ(strings.SubStr(nullptr, 1, 1), nullptr);
    EXPECT_EQ(strings.Right(nullptr, 1), nullptr);
    EXPECT_EQ(strings.Upper(nullptr), nullptr);
    EXPECT_EQ(strings.QStrip(nullptr), nullptr);
    EXPECT_EQ(strings.Strip(nullptr, "B", " "), nullptr);
}

TEST(ZORDuxStringManagement, HasNeitherStateNorVirtualOperations)
{
    EXPECT_TRUE(std::is_empty_v<ZORDuxStringManagement>);
    EXPECT_FALSE(std::is_polymorphic_v<ZORDuxStringManagement>);
}
