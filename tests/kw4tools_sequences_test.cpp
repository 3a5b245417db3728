// kw4tools interval, ids

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::StartsWith;

TEST(kw4tools_interval, PrintsCodeAndResult)
{
    const struct {
        Kw4tools::Arguments arguments;
        const char* printed;
    } rows[] = {
        {{"1:10", "3:5"}, "code 2\nresult 1 2 6 10\n"},
        {{"1:10", "11:12"}, "code 0\nresult\n"},
        {{"1:10", "1:10"}, "code 1\nresult\n"},
        {{"1:5", "3:9"}, "code 3\nresult 6 9 1 2\n"},
        {{"-5:-1", "-9:-3"}, "code 12\nresult -9 -6 -9 -6\n"}, // an end of -1 is no end
        {{"5", "1:5"}, "code 10\nresult 1 4 1 4\n"},
        {{"1", "1:5"}, "code 9\nresult 6 -1\n"},
        {{"1:10", "3:5", "--step", "2"}, "code 2\nresult 1 1 7 10\n"},
        {{"--step", "-1", "1:10", "3:5"}, "code 2\nresult 1 4 4 10\n"},
        {{"0:10", "0:10"}, "code 1\nresult\n"},
        {{"-3:10", "0:10"}, "code 2\nresult untouched\n"},
        {{"-2147483648:2147483647", "0:0", "--step", "0"},
         "code 2\nresult -2147483648 0 0 2147483647\n"},
    };
    const Kw4tools program;
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        Kw4tools::Arguments arguments = row.arguments;
        arguments.insert(arguments.begin(), "interval");
        EXPECT_EQ(program.Result(arguments), row.printed);
    }
}

TEST(kw4tools_interval, DrawsBehindTheResult)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"interval", "1:10", "3:5", "--draw"}),
              "code 2\n"
              "result 1 2 6 10\n"
              "        1   2   3       5   6               10\n"
              "        +---+---+-------+---+---------------+\n"
              "first   [===================================]           1:10\n"
              "second          [=======]                               3:5\n"
              "piece   [===]                                           1:2\n"
              "piece                       [===============]           6:10\n");
    EXPECT_THAT(program.Result({"interval", "1:-1", "3", "--draw"}), HasSubstr("1 and up\n"));
}

TEST(kw4tools_interval, RefusesWhatIsNoInterval)
{
    const Kw4tools program;
    for (const char* interval : {"", ":", "1:", ":1", "a", "1:b", "1:2:3", "1 :2", "2147483648",
                                 "1:-2147483649", "[1:2]"}) {
        SCOPED_TRACE(interval);
        const auto [status, out, err] = program({"interval", "1:2", interval});
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, StartsWith("kw4tools: SECOND is "));
        EXPECT_THAT(err, HasSubstr("; an interval is START:END or START\n"));
    }
    EXPECT_EQ(program({"interval", "1:2", "1:2", "--step", "x"}).status, 2);
}

TEST(kw4tools_ids, UniqueKeepsTheLastOfEach)
{
    const Kw4tools program;
    program.Site().Write("list", "AA\nbb\n\naa\ncc\n\n");
    EXPECT_EQ(program.Result({"ids", "unique", "list"}), "bb\naa\ncc\n\n");
    program.Site().Write("empty", "");
    EXPECT_EQ(program.Result({"ids", "unique", "empty"}), "");
}

TEST(kw4tools_ids, IntersectAndSubtractKeepTheOrderOfTheFirst)
{
    Kw4tools program;
    program.Site().Write("a", "01\n02\n03\n02\n\n");
    program.Run().Input("02\n\n04");
    EXPECT_EQ(program.Result({"ids", "intersect", "a", "-"}), "02\n02\n\n");
    EXPECT_EQ(program.Result({"ids", "subtract", "a", "-"}), "01\n03\n");
    EXPECT_EQ(program.Result({"ids", "subtract", "-", "a"}), "04\n");
    const auto both = program({"ids", "subtract", "-", "-"});
    EXPECT_EQ(both.status, 2);
    EXPECT_THAT(both.err, HasSubstr("only one of the lists can be standard input"));
}

TEST(kw4tools_ids, TestsPrintAndExit)
{
    const Kw4tools program;
    program.Site().Write("list", "1f80\r\n 00\tff \n");
    const struct {
        Kw4tools::Arguments arguments;
        bool yes;
    } rows[] = {
        {{"contains", "list", "1F80"}, true}, {{"contains", "list", "00ff"}, true},
        {{"contains", "list", "00"}, false},  {{"contains", "list", ""}, false},
        {{"equal", "1f80", "1F 80"}, true},   {{"equal", "", ""}, true},
        {{"equal", "", "00"}, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        Kw4tools::Arguments arguments = row.arguments;
        arguments.insert(arguments.begin(), "ids");
        const auto [status, out, err] = program(arguments);
        EXPECT_EQ(status, row.yes ? 0 : 1);
        EXPECT_EQ(out, row.yes ? "1\n" : "0\n");
        EXPECT_EQ(err, "");
    }
}

TEST(kw4tools_ids, TakesTheOctetsThatIdPrints)
{
    Kw4tools program;
    const std::string printed = program.Result({"id", "--octets", "--count", "3"});
    std::string pairs = printed;
    pairs.erase(std::remove(pairs.begin(), pairs.end(), ' '), pairs.end());
    program.Run().Input(printed);
    EXPECT_EQ(program.Result({"ids", "unique", "-"}), pairs);
}

TEST(kw4tools_ids, TellsWhatIsNoIdentifierAndWhatCannotBeRead)
{
    const Kw4tools program;
    program.Site().Write("list", "1f\n1\n");
    program.Site().Write("nul", std::string("1f\n\0\0\n", 6));
    const struct {
        Kw4tools::Arguments arguments;
        const char* problem;
    } rows[] = {
        {{"unique", "list"}, "line 2 of 'list' is no identifier"},
        {{"unique", "nul"}, "line 2 of 'nul' is no identifier"},
        {{"unique", "missing"}, "'missing' cannot be opened for reading: No such file"},
        {{"unique", "."}, "'.' cannot be read: Is a directory"},
        {{"contains", "list", "xy"}, "ID is 'xy', which is no identifier"},
        {{"equal", "1f", "1f8"}, "OTHER is '1f8', which is no identifier"},
        {{"equal", "1 f", "1f"}, "ID is '1 f', which is no identifier"},
    };
    for (const auto& row : rows) {
        Kw4tools::Arguments arguments = row.arguments;
        arguments.insert(arguments.begin(), "ids");
        const auto [status, out, err] = program(arguments);
        SCOPED_TRACE(err);
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, HasSubstr(row.problem));
    }
}
