// kw4tools text

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace
{

using Arguments = Kw4tools::Arguments;

Arguments Text(Arguments iArguments)
{
    iArguments.insert(iArguments.begin(), "text");
    return iArguments;
}

} // namespace

TEST(kw4tools_text, PrintsWhatTheFunctionReturns)
{
    const struct {
        Arguments arguments;
        const char* printed;
    } rows[] = {
        {{"cswap", "a", "b", "banana", "3"}, "2\nbanbnb\n"},
        {{"cswap", "a", "", "banana", "3"}, "2\nban\n"},
        {{"cswap", "a", "b", "banana", "7"}, "0\nbanana\n"},
        {{"insert", "XY", "abc", "1"}, "aXYbc\n"},
        {{"insert", "XY", "abc", "3"}, "abcXY\n"},
        {{"left", "abcdef", "3"}, "abc\n"},
        {{"lower", "AbC"}, "abc\n"},
        {{"upper", "AbC"}, "ABC\n"},
        {{"upper", ""}, "\n"},
        {{"overly", "XY", "abcd", "2"}, "aXYd\n"},
        {{"pad", "ab", "4", "*"}, "ab**\n"},
        {{"pos", "cd", "abcdcd", "4"}, "5\n"},
        {{"pos", "cd", "abcdcd", "6"}, "0\n"},
        {{"pos", "cd", "abcdcd", "0"}, "-1\n"},
        {{"pos", "cd", "abcdcd", "4294967295"}, "0\n"},
        {{"pos", "cd", "abcdcd", "-1"}, "0\n"},
        {{"qstrip", "  a b  "}, "a b\n"},
        {{"right", "abcdef", "2"}, "ef\n"},
        {{"strip", "  a  ", "B", " "}, "a  \n"},
        {{"strip", "  a  ", "L", " "}, "a  \n"},
        {{"strip", "  a  ", "T", " "}, "  a\n"},
        {{"strip", "  a  ", "", ""}, "  a  \n"},
        {{"substr", "abcdef", "2", "3"}, "bcd\n"},
        {{"subword", " one  two", "1", "2"}, "one two\n"},
        {{"getwsep", "0"}, " \n"},
        {{"getwsep", "-1"}, " \n"},
        {{"--wsep", ",", "getwsep", "0"}, ",\n"},
        {{"--wsep", ",", "getwsep", "-1"}, " \n"},
        {{"setwsep", ","}, ",\n"},
        {{"word", " one  two", "2"}, "two\n"},
        {{"--wsep", ",", "word", "a,b,,c", "3"}, "c\n"},
        {{"word", "a,b,,c", "3", "--wsep", ","}, "c\n"},
        {{"--wsep", "", "word", "a b", "1"}, "a b\n"},
        {{"wordlen", "ab c", "1"}, "2\n"},
        {{"wordlen", "ab c", "3"}, "0\n"},
        {{"wordlen", "ab c", "-2147483648"}, "0\n"},
        {{"wordlen", "ab c", "0"}, "-1\n"},
        {{"wordpos", "two", " one  two", "1"}, "2\n"},
        {{"wordpos", "three", " one  two", "1"}, "0\n"},
        {{"wordpos", "two", " one  two", "0"}, "-1\n"},
        {{"xword", "plate bolt", "2"}, "bolt\n"},
        {{"xword", "", "2"}, "\n"},
        {{"left", "[a,b]", "5"}, "[a,b]\n"},
        {{"left", "\xff\xfe", "1"}, "\xff\n"},
        {{"left", "--", "--wsep", "2"}, "--\n"},
    };
    const Kw4tools program;
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        EXPECT_EQ(program.Result(Text(row.arguments)), row.printed);
    }
}

TEST(kw4tools_text, PrintsNothingAndExitsWithOneForANullResult)
{
    const Kw4tools program;
    for (const Arguments& arguments : {Arguments{"left", "abc", "4"},
                                       {"left", "abc", "0"},
                                       {"right", "abc", "4"},
                                       {"substr", "abc", "2", "3"},
                                       {"substr", "abc", "4294967295", "2"},
                                       {"insert", "XY", "abc", "4"},
                                       {"overly", "XY", "", "1"},
                                       {"pad", "ab", "1", "*"},
                                       {"subword", "a b", "3", "1"},
                                       {"word", "", "1"},
                                       {"xword", "a b", "3"}}) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto [status, out, err] = program(Text(arguments));
        EXPECT_EQ(status, 1);
        EXPECT_EQ(out + err, "");
    }
}

TEST(kw4tools_text, TellsArgumentsThatDoNotFitTheFunction)
{
    const struct {
        Arguments arguments;
        const char* problem;
    } rows[] = {
        {{"left", "abc", "x"}, "COUNT is 'x', which is not a whole number"},
        {{"left", "abc", "4294967296"}, "COUNT is 4294967296, which does not fit 32 bits"},
        {{"left", "abc", "-2147483649"}, "COUNT is -2147483649, which does not fit 32 bits"},
        {{"wordlen", "abc", "2147483648"}, "NUMBER is 2147483648, which does not fit 32 bits"},
        {{"pad", "abc", "5", "ab"}, "FILL is 'ab': it must be one single-byte character"},
        {{"pad", "abc", "5", "\xc3\xa9"}, "it must be one single-byte character"},
        {{"--wsep", "ab", "word", "abc", "1"}, "--wsep is 'ab'"},
        {{"left", "abc"}, "COUNT is required"},
        {{"middle", "abc"}, "there is no command 'middle'"},
    };
    const Kw4tools program;
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const auto [status, out, err] = program(Text(row.arguments));
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, HasSubstr(row.problem));
    }
}

TEST(kw4tools_text, HasAHelpTextForEveryFunction)
{
    const Kw4tools program;
    for (const char* function : {"cswap", "insert", "left", "lower", "overly", "pad", "pos",
                                 "qstrip", "right", "strip", "substr", "subword", "upper",
                                 "getwsep", "setwsep", "xword", "word", "wordlen", "wordpos"}) {
        const std::string help = program.Result({"text", function, "--help"});
        EXPECT_THAT(help, HasSubstr("Usage: kw4tools text " + std::string(function)));
        EXPECT_THAT(help, HasSubstr("Example:\n  kw4tools text " + std::string(function)));
    }
}
