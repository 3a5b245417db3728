#include "ZORDuxTrace.h"

#include "InChild.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "ZORDuxTraceStep.h"
#include "ZORUnicodeString.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <functional>
#include <limits>
#include <locale>
#include <map>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <utility>

// The environment is read once for each process: every test runs its traces in a child.
namespace
{

using testing::HasSubstr;

const std::string kName = "Channel          "; // as a header writes it: 16 characters and a blank

using Variables = std::map<std::string, std::optional<std::string>>;

// Runs traces in a process of its own with all channels on, colours, levels and report off, and
// what `iVariables` says.
ChildEnd Traced(const std::function<void()>& iBody, Variables iVariables = {})
{
    iVariables.insert({{"ZOR_TRACE", "all"},
                       {"ZOR_TRACE_FILE", std::nullopt},
                       {"DUX_TRACE_REPORT", std::nullopt},
                       {"DUX_TRACE_COLOR", std::nullopt},
                       {"DUX_TRACE_DEBUG", std::nullopt},
                       {"DUX_TRACE_LEVEL", std::nullopt},
                       {"TERM", std::nullopt}});
    std::vector<std::unique_ptr<ScopedEnvironment>> scopes;
    for (const auto& [name, value] : iVariables)
        scopes.push_back(std::make_unique<ScopedEnvironment>(name, value));
    return InChild(iBody);
}

// A trace of that name.
class Named
{
public:
    explicit Named(std::string iName, int iLevel = 2)
        : _Name(std::move(iName)), trace(_Name.data(), nullptr, nullptr, iLevel)
    {
    }

private:
    std::string _Name;

public:
    ZORDuxTrace trace;
};

// What one trace writes.
std::string Written(const std::function<void(ZORDuxTrace&)>& iBody,
                    const Variables& iVariables = {})
{
    const auto traced = [&] {
        Named named("Channel");
        iBody(named.trace);
    };
    return Traced(traced, iVariables).error;
}

// The state that is process-wide, in the order of its table, as text.
std::string State()
{
    std::ostringstream text;
    text << ZORDuxTrace::_gInit << ' ' << ZORDuxTrace::_gLevel << ' '
         << (ZORDuxTrace::_gTrace != nullptr) << ' ' << TraceStackHead << ' ' << _gPrintLevelFlag
         << ' ' << _gAixterm << ' ' << _gTraceFunction << ' ' << (_gReport != nullptr) << ' '
         << _gCoverageReport << ' ' << _gTraceNumber << ' ' << _gTraceTotalNumber;
    return text.str();
}

void Print(const std::string& iLine)
{
    std::printf("%s\n", iLine.c_str());
}

} // namespace

TEST(ZORDuxTrace, WritesBlocksAndTextsUnderTheNameOfItsChannel)
{
    const auto search = [] {
        char name[] = "DuxSearch";
        ZORDuxTrace trace(name, nullptr, nullptr, 2);
        trace.FunctionBegin("Search");
        trace << "directories: " << 3 << '\n';
        trace.FunctionEnd();
    };
    EXPECT_EQ(Traced(search, {{"ZOR_TRACE", "DuxSearch"}}).error,
              "DuxSearch        Search() {\n"
              "DuxSearch        : directories: 3\n"
              "DuxSearch        }\n");
    EXPECT_EQ(Traced(search, {{"ZOR_TRACE", "Other"}}).error, "");
}

TEST(ZORDuxTrace, PadsItsNameToSixteenCharactersOrCutsIt)
{
    const auto headerOf = [](const char* name) {
        return Traced([=] { Named(name).trace << "."; }).error;
    };
    EXPECT_EQ(headerOf("short"), "short            .");
    EXPECT_EQ(headerOf(""), "                 .");
    EXPECT_EQ(headerOf("123456789012345"), "123456789012345  .");
    EXPECT_EQ(headerOf("1234567890123456"), "1234567890123456 .");
    EXPECT_EQ(headerOf("12345678901234567"), "1234567890123456 .");
    EXPECT_EQ(headerOf(std::string(5000, 'x').c_str()), std::string(16, 'x') + " .");
    EXPECT_EQ(headerOf("50%s"), "50%s             .");
}

TEST(ZORDuxTrace, WithoutANameHasAnEmptyOne)
{
    const ChildEnd end = Traced([] { ZORDuxTrace(nullptr, nullptr, nullptr, 2) << ".\n"; });
    EXPECT_EQ(end.error, "                 .\n");
}

TEST(ZORDuxTrace, ColoursItsNameInTheRightTerminalWhenAsked)
{
    const std::string plain = kName + ".\n";
    const std::string coloured = "\033[36mChannel         \033[37m .\n";
    const auto line = [](ZORDuxTrace& trace) { trace << ".\n"; };
    EXPECT_EQ(Written(line, {{"TERM", "aixterm"}, {"DUX_TRACE_COLOR", "1"}}), coloured);
    EXPECT_EQ(Written(line, {{"TERM", "aixterm"}, {"DUX_TRACE_COLOR", ""}}), coloured);
    EXPECT_EQ(Written(line, {{"TERM", "aixterm"}}), plain);
    EXPECT_EQ(Written(line, {{"DUX_TRACE_COLOR", "1"}}), plain);
    EXPECT_EQ(Written(line, {{"TERM", "xterm"}, {"DUX_TRACE_COLOR", "1"}}), plain);
    EXPECT_EQ(Written(line, {{"TERM", "aixterm-16color"}, {"DUX_TRACE_COLOR", "1"}}), plain);
    EXPECT_EQ(coloured.size() - 2, 27U);
    EXPECT_EQ(Traced([] { Named("12345678901234567").trace << "."; },
                     {{"TERM", "aixterm"}, {"DUX_TRACE_COLOR", "1"}})
                  .error,
              "\033[36m1234567890123456\033[37m .");
}

TEST(ZORDuxTrace, MarksFollowAColouredNameAsAPlainOne)
{
    const std::string name = "\033[36mChannel         \033[37m ";
    EXPECT_EQ(Written(
                  [](ZORDuxTrace& trace) {
                      trace.FunctionBegin("Block");
                      trace << "text\n";
                  },
                  {{"TERM", "aixterm"}, {"DUX_TRACE_COLOR", "1"}}),
              name + "Block() {\n" + name + ": text\n");
}

TEST(ZORDuxTrace, PrintsTheDetailLevelWhereAsked)
{
    const auto lines = [](ZORDuxTrace& trace) {
        trace << "begin\n";
        for (const int level : {2, 1, 0, -1, -12345, INT_MIN}) {
            trace.SetDetailLevel(level);
            trace << "level\n";
        }
        trace.FunctionBegin("Block");
        trace << "inside\n";
    };
    EXPECT_EQ(Written(lines, {{"DUX_TRACE_LEVEL", ""}}),
              kName + "0000 begin\n" + kName + "0002 level\n" + kName + "0001 level\n" + kName +
                  "0000 level\n" + kName + "-001 level\n" + kName + "-12345 level\n" + kName +
                  "-2147483648 level\n" + kName + "-2147483648 Block() {\n" + kName +
                  "-2147483648 : inside\n");
    EXPECT_EQ(Traced(
                  [] {
                      Named deep("Channel", INT_MAX);
                      deep.trace.SetDetailLevel(12345);
                      deep.trace << "level\n";
                  },
                  {{"DUX_TRACE_LEVEL", "no"}})
                  .error,
              kName + "12345 level\n");
}

TEST(ZORDuxTrace, MarksEachOpenBlockAndClosesItAtItsOpeningDepth)
{
    EXPECT_EQ(Written([](ZORDuxTrace& trace) {
                  trace.FunctionBegin("Outer");
                  trace.FunctionBegin("Inner");
                  trace << "text\n";
                  trace.FunctionEnd();
                  trace.FunctionEnd();
                  trace << "after\n";
              }),
              kName + "Outer() {\n" + kName + ": Inner() {\n" + kName + ": : text\n" + kName +
                  ": }\n" + kName + "}\n" + kName + "after\n");
}

TEST(ZORDuxTrace, BlocksOfOneChannelIndentTheLinesOfAll)
{
    const ChildEnd end = Traced([] {
        Named first("first");
        Named second("second");
        first.trace.FunctionBegin("Block");
        second.trace << "inside\n";
        first.trace.FunctionEnd();
        second.trace << "outside\n";
    });
    EXPECT_EQ(end.error, "first            Block() {\n"
                         "second           : inside\n"
                         "first            }\n"
                         "second           outside\n");
}

TEST(ZORDuxTrace, ABlockMayHaveNoName)
{
    EXPECT_EQ(Written([](ZORDuxTrace& trace) {
                  trace.FunctionBegin(nullptr);
                  trace.FunctionBegin("");
              }),
              kName + "() {\n" + kName + ": () {\n");
}

TEST(ZORDuxTrace, MoreEndsThanBlocksMarkNothing)
{
    EXPECT_EQ(Written([](ZORDuxTrace& trace) {
                  trace.FunctionEnd();
                  trace.FunctionEnd();
                  trace.FunctionBegin("Block");
                  trace << "text\n";
              }),
              kName + "}\n" + kName + "}\n" + kName + "Block() {\n" + kName + "text\n");
}

TEST(ZORDuxTrace, NewlinesAtBothEndsOfATextEndLinesAndOthersDoNot)
{
    const std::pair<const char*, std::string> rows[] = {
        {"", ""},
        {"abc", kName + "abc|"},
        {"abc\n", kName + "abc\n" + kName + "|"},
        {"\n", kName + "\n" + kName + "|"},
        {"\n\n", kName + "\n" + kName + "\n" + kName + "|"},
        {"\nabc\n", kName + "\n" + kName + "abc\n" + kName + "|"},
        {"\nabc", kName + "\n" + kName + "abc|"},
        {"a\nb", kName + "a\nb|"},
        {"a\n\nb\n", kName + "a\n\nb\n" + kName + "|"},
        {"a\n\n", kName + "a\n\n" + kName + "|"},
        {"\n\na\nb", kName + "\n" + kName + "\n" + kName + "a\nb|"},
        {"%s%n", kName + "%s%n|"},
    };
    for (const auto& [text, expected] : rows) {
        const std::string written = Written([text = text](ZORDuxTrace& trace) {
            trace << text;
            if (*text)
                trace << "|";
        });
        EXPECT_EQ(written, expected) << testing::PrintToString(text);
    }
}

TEST(ZORDuxTrace, ANewlineInTheMiddleOfALineEndsIt)
{
    EXPECT_EQ(Written([](ZORDuxTrace& trace) {
                  trace << "a"
                        << "\nb" << '\n'
                        << "c" << '\n';
              }),
              kName + "a\n" + kName + "b\n" + kName + "c\n");
    EXPECT_EQ(Written([](ZORDuxTrace& trace) { trace << '\n'
                                                     << '\n'
                                                     << 'x' << 'y'; }),
              kName + "\n" + kName + "\n" + kName + "xy");
}

TEST(ZORDuxTrace, ANullTextWritesNothing)
{
    EXPECT_EQ(Written([](ZORDuxTrace& trace) {
                  trace << static_cast<const char*>(nullptr) << ZORUnicodeString() << "";
              }),
              "");
}

TEST(ZORDuxTrace, WritesNumbersInDecimal)
{
    EXPECT_EQ(Written([](ZORDuxTrace& trace) {
                  trace << 0 << ' ' << -1 << ' ' << INT_MAX << ' ' << INT_MIN << ' ' << 7L << ' '
                        << LONG_MAX << ' ' << LONG_MIN << '\n';
              }),
              kName + "0 -1 2147483647 -2147483648 7 9223372036854775807 -9223372036854775808\n");
}

TEST(ZORDuxTrace, WritesDoublesWithoutTheirFraction)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, const char*> rows[] = {
        {2.9, "2"},
        {-2.9, "-2"},
        {0.0, "0"},
        {-0.9, "0"},
        {1e15 + 0.5, "1000000000000000"},
        {9007199254740993.0, "9007199254740992"},
        {std::nextafter(0x1p63, 0), "9223372036854774784"},
        {0x1p63, "9223372036854775807"},
        {-0x1p63, "-9223372036854775808"},
        {std::nextafter(-0x1p63, 0), "-9223372036854774784"},
        {-0x1.8p62, "-6917529027641081856"},
        {1e300, "9223372036854775807"},
        {-1e300, "-9223372036854775808"},
        {infinity, "9223372036854775807"},
        {-infinity, "-9223372036854775808"},
        {std::numeric_limits<double>::quiet_NaN(), "0"},
        {-std::numeric_limits<double>::quiet_NaN(), "0"},
        {5e-324, "0"},
    };
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(Written([number = number](ZORDuxTrace& trace) { trace << number; }),
                  kName + expected)
            << number;
}

TEST(ZORDuxTrace, WritesPointersAsPrintfDoes)
{
    ZORBaseUnknown* const component = new ZORBaseUnknown;
    const ZORBaseUnknown_var handle(component);
    component->Release();
    char expected[64];
    std::snprintf(expected, sizeof expected, "%p", static_cast<void*>(component));
    const std::string line = kName + expected + " " + expected + " " + expected + " (nil)\n";
    EXPECT_EQ(Written([&](ZORDuxTrace& trace) {
                  trace << static_cast<const void*>(component) << ' ' << component << ' ' << handle
                        << ' ' << ZORBaseUnknown_var() << '\n';
              }),
              line);
    EXPECT_EQ(component->AddRef(), 2U);
    component->Release();
}

TEST(ZORDuxTrace, WritesStringsAsTheirBytes)
{
    EXPECT_EQ(Written([](ZORDuxTrace& trace) { trace << ZORUnicodeString("\n\u00e9lan\n"); }),
              kName + "\n" + kName + "\u00e9lan\n");
}

TEST(ZORDuxTrace, LongTextsAndDeepBlocksAreNotCut)
{
    const std::string text(100'000, 'x');
    std::string marks;
    for (int i = 0; i < 2000; ++i)
        marks += ": ";
    for (const char* level : {"", "0000 "}) {
        const std::string written = Written(
            [&](ZORDuxTrace& trace) {
                trace << text.c_str() << "\n";
                ZORDuxTrace::_gLevel = 1999;
                trace << "deep\n";
            },
            {{"DUX_TRACE_LEVEL", *level ? std::optional<std::string>("1") : std::nullopt}});
        EXPECT_EQ(written, kName + level + text + "\n" + kName + level + marks + "deep\n");
    }
}

// With and without the level, whose length is odd: the marks then end at the buffer's last byte,
// which is for the NUL.
TEST(ZORDuxTrace, MarksOfEveryDepthAroundTheBuffersSizeAreWhole)
{
    for (const std::string level : {"", "0000 "}) {
        const std::string written = Written(
            [](ZORDuxTrace& trace) {
                for (int depth = 490; depth < 530; ++depth) {
                    ZORDuxTrace::_gLevel = depth - 1;
                    trace << "x\n";
                    if (BufferAgile[sizeof BufferAgile - 1] != '\0')
                        std::fputs("text up to the buffer's last byte", stderr);
                }
            },
            {{"DUX_TRACE_LEVEL", level.empty() ? std::nullopt : std::optional<std::string>("1")}});
        std::string expected;
        for (int depth = 490; depth < 530; ++depth) {
            expected.append(kName).append(level);
            for (int i = 0; i < depth; ++i)
                expected += ": ";
            expected += "x\n";
        }
        EXPECT_EQ(written, expected);
    }
}

TEST(ZORDuxTrace, ShowsOnlyWhatReachesTheDetailLevel)
{
    const ChildEnd end = Traced([] {
        for (const int level : {-1, 0, 1, 2, 3}) {
            Named named("Channel", level);
            named.trace << level << ' ' << (named.trace.IsShown() ? "begin" : "") << '\n';
            named.trace.SetDetailLevel(2);
            named.trace << level << ' ' << (named.trace.IsShown() ? "at 2" : "") << '\n';
        }
    });
    EXPECT_EQ(end.error, kName + "0 begin\n" + kName + "1 begin\n" + kName + "2 begin\n" + kName +
                             "2 at 2\n" + kName + "3 begin\n" + kName + "3 at 2\n");
}

TEST(ZORDuxTrace, BlocksThatAreNotShownAreCountedAndReported)
{
    const ScopedDirectory directory;
    const ChildEnd end = Traced(
        [] {
            Named quiet("quiet", -1);
            quiet.trace.FunctionBegin("Hidden");
            Named shown("shown");
            shown.trace << "depth " << ZORDuxTrace::_gLevel << ", stack " << TraceStackHead << "\n";
            quiet.trace.FunctionEnd();
            shown.trace << "depth " << ZORDuxTrace::_gLevel << ", stack " << TraceStackHead << "\n";
        },
        {{"DUX_TRACE_REPORT", directory / "report"}});
    EXPECT_THAT(end.error, HasSubstr("shown            depth -1, stack 0\n"
                                     "shown            depth -1, stack -1\n"));
    EXPECT_THAT(directory.Read("report"), HasSubstr("\nquiet             : Hidden\n"));
}

TEST(ZORDuxTrace, AChannelThatIsOffWritesNothingAndCountsBlocks)
{
    const ChildEnd end = Traced(
        [] {
            Named off("off");
            off.trace.FunctionBegin("Block");
            off.trace << "text" << 'c' << 1 << 1L << 1.0 << &off << ZORUnicodeString("u") << "\n";
            Print(State());
            off.trace.FunctionEnd();
            Print(State());
        },
        {{"ZOR_TRACE", "other"}});
    EXPECT_EQ(end.error, "");
    EXPECT_EQ(end.output, "1 -1 0 0 0 0 0 0 0 1 1\n"
                          "1 -1 0 -1 0 0 0 0 0 1 1\n");
}

TEST(ZORDuxTrace, WhatAChannelThatIsSwitchedOffLaterDoesStillMoves)
{
    const ChildEnd end = Traced([] {
        Named named("Channel");
        named.trace << "begun";
        ZORTrace::SetSwitch("Channel", 0);
        named.trace << "lost\n";           // ends the line
        named.trace << "lost" << 1 << 'x'; // begins one: its header is lost
        named.trace.FunctionBegin("Lost"); // indents
        ZORTrace::SetSwitch("Channel", 1);
        named.trace << " shown\n";
        named.trace << "shown\n";
    });
    EXPECT_EQ(end.error, kName + "begun" + kName + ":  shown\n" + kName + ": shown\n");
}

TEST(ZORDuxTrace, AChannelThatIsSwitchedOnLaterStaysSilent)
{
    const ChildEnd end = Traced(
        [] {
            Named named("Channel");
            ZORTrace::SetSwitch("Channel", 1);
            named.trace << "lost\n";
        },
        {{"ZOR_TRACE", ""}});
    EXPECT_EQ(end.error, "");
}

TEST(ZORDuxTrace, NotesTheLevelOfThePutBeforeItPuts)
{
    class Open : public ZORDuxTrace
    {
    public:
        using ZORDuxTrace::ZORDuxTrace;
        std::string Last() const { return std::to_string(_LastLevel); }
    };
    const ChildEnd end = Traced([] {
        char name[] = "Channel";
        Open trace(name, nullptr, nullptr, 5);
        Print(trace.Last());
        trace << "text";
        Print(trace.Last());
        trace.SetDetailLevel(4);
        Print(trace.Last());
        trace << 1;
        Print(trace.Last());
        ZORTrace::SetSwitch("Channel", 0);
        trace.SetDetailLevel(3);
        trace << "text" << 1;
        Print(trace.Last());
    });
    EXPECT_EQ(end.output, "0\n2\n2\n4\n4\n");
}

TEST(ZORDuxTrace, StateIsZeroUntilTheFirstTraceAndCountsFromThen)
{
    const ChildEnd end = Traced(
        [] {
            Print(State());
            {
                const Named first("a");
                const Named second("b");
                Print(State());
            }
            Print(State());
            const Named third("c");
            Print(State());
        },
        {{"DUX_TRACE_DEBUG", ""},
         {"DUX_TRACE_LEVEL", ""},
         {"TERM", "aixterm"},
         {"DUX_TRACE_COLOR", ""}});
    EXPECT_EQ(end.output, "0 0 0 0 0 0 0 0 0 0 0\n"
                          "1 -1 0 -1 1 1 1 0 0 2 2\n"
                          "1 -1 0 -1 1 1 1 0 0 0 2\n"
                          "1 -1 0 -1 1 1 1 0 0 1 3\n");
}

TEST(ZORDuxTrace, AFlagThatAProgramSetBeforehandStays)
{
    const auto flagged = [] {
        _gPrintLevelFlag = _gTraceFunction = _gAixterm = 1;
        const Named first("a");
        Print(State());
    };
    EXPECT_EQ(Traced(flagged).output, "1 -1 0 -1 1 1 1 0 0 1 1\n");
    EXPECT_EQ(Traced(flagged, {{"TERM", "xterm"}}).output, "1 -1 0 -1 1 0 1 0 0 1 1\n")
        << "the terminal decides on colours";
}

TEST(ZORDuxTrace, ReadsTheEnvironmentOnce)
{
    const ScopedDirectory directory;
    const ChildEnd end = Traced([&] {
        {
            const Named first("a");
        }
        setenv("DUX_TRACE_LEVEL", "1", 1);
        setenv("DUX_TRACE_DEBUG", "1", 1);
        setenv("TERM", "aixterm", 1);
        setenv("DUX_TRACE_COLOR", "1", 1);
        setenv("DUX_TRACE_REPORT", (directory / "report").c_str(), 1);
        Named second("Channel");
        second.trace << "text\n";
        Print(State());
    });
    EXPECT_EQ(end.error, kName + "text\n");
    EXPECT_EQ(end.output, "1 -1 0 -1 0 0 0 0 0 1 2\n");
    EXPECT_FALSE(std::filesystem::exists(directory / "report"));
}

TEST(ZORDuxTrace, CurrentIsWhatSomebodySet)
{
    const ChildEnd end = Traced([] {
        Named named("Channel");
        Print(ZORDuxTrace::Current() ? "set" : "null");
        ZORDuxTrace::_gTrace = &named.trace;
        Print(ZORDuxTrace::Current() == &named.trace ? "set" : "null");
    });
    EXPECT_EQ(end.output, "null\nset\n");
}

TEST(ZORDuxTrace, ReportsEveryTraceAndEveryBlock)
{
    const ScopedDirectory directory;
    const std::string path = directory.Write("report", "something old\n");
    const ChildEnd end = Traced(
        [] {
            Named on("on");
            Named off("off");
            on.trace.FunctionBegin("First");
            off.trace.FunctionBegin("Second");
            on.trace.FunctionEnd();
            Named longName("a name of more than sixteen characters");
            longName.trace.FunctionBegin(nullptr);
        },
        {{"DUX_TRACE_REPORT", path}, {"ZOR_TRACE", "on"}});
    EXPECT_EQ(directory.Read("report"),
              "_DUX Trace            :on\n"
              "_DUX Trace [Inactive] : off\n"
              "on                : First\n"
              "off               : Second\n"
              "_DUX Trace [Inactive] : a name of more than sixteen characters\n"
              "a name of more t  : \n"
              "Total trace number = 3\n");
    EXPECT_EQ(end.error, "DUX_TRACE_REPORT: using file " + path +
                             "\n"
                             "on               First() {\n"
                             "on               }\n");
}

TEST(ZORDuxTrace, TheReportGoesOnUntilTheLastTraceWent)
{
    const ScopedDirectory directory;
    Traced(
        [] {
            Named first("first");
            {
                const Named second("second");
            }
            first.trace.FunctionBegin("Block");
        },
        {{"DUX_TRACE_REPORT", directory / "report"}});
    EXPECT_EQ(directory.Read("report"), "_DUX Trace            :first\n"
                                        "_DUX Trace            :second\n"
                                        "first             : Block\n"
                                        "Total trace number = 2\n");
}

TEST(ZORDuxTrace, TheReportHasTheHeaderWithItsColours)
{
    const ScopedDirectory directory;
    Traced([] { Named("Channel").trace.FunctionBegin("Block"); },
           {{"DUX_TRACE_REPORT", directory / "report"},
            {"TERM", "aixterm"},
            {"DUX_TRACE_COLOR", "1"}});
    EXPECT_EQ(directory.Read("report"), "_DUX Trace            :Channel\n"
                                        "\033[36mChannel         \033[37m  : Block\n"
                                        "Total trace number = 1\n");
}

TEST(ZORDuxTrace, TheReportIsTheSameInEveryLocale)
{
    struct Grouped : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const ScopedDirectory directory;
    Traced(
        [] {
            std::locale::global(std::locale(std::locale::classic(), new Grouped));
            _gTraceTotalNumber = 1'233'999;
            const Named named("Channel");
        },
        {{"DUX_TRACE_REPORT", directory / "report"}});
    EXPECT_THAT(directory.Read("report"), HasSubstr("Total trace number = 1234000\n"));
}

TEST(ZORDuxTrace, AReportThatCannotBeOpenedIsToldAndTracingGoesOn)
{
    for (const std::string path : {"/nowhere/report", "", "/"}) {
        const ChildEnd end = Traced(
            [] {
                Named named("Channel");
                named.trace.FunctionBegin("Block");
                Print(State());
                const Named another("another");
            },
            {{"DUX_TRACE_REPORT", path}});
        EXPECT_EQ(end.error,
                  "DUX_TRACE_REPORT: failed to open file " + path + "\n" + kName + "Block() {\n");
        EXPECT_EQ(end.output, "1 0 0 0 0 0 0 0 0 1 1\n");
        EXPECT_EQ(end.status, 0);
    }
}

TEST(ZORDuxTrace, AfterTheLastTraceTheReportIsClosedForGood)
{
    const ScopedDirectory directory;
    const ChildEnd end = Traced(
        [&] {
            {
                const Named first("first");
            }
            Print(State());
            {
                Named later("later");
                later.trace.FunctionBegin("Block");
                Print(State());
            }
        },
        {{"DUX_TRACE_REPORT", directory / "report"}});
    EXPECT_EQ(directory.Read("report"), "_DUX Trace            :first\nTotal trace number = 1\n");
    EXPECT_EQ(end.output, "1 -1 0 -1 0 0 0 0 1 0 1\n"
                          "1 0 0 0 0 0 0 0 1 1 2\n");
    EXPECT_EQ(end.status, 0);
}

TEST(ZORDuxTrace, EveryFinishedLineIsThereHoweverTheProcessEnds)
{
    for (const int signal : {SIGKILL, SIGABRT, 0}) {
        const ScopedDirectory directory;
        const ChildEnd end = Traced(
            [&] {
                Named named("Channel");
                named.trace.FunctionBegin("Block");
                named.trace << "finished " << 1 << '\n';
                named.trace << "in the making";
                *_gReport << "a module's own line\nin the "
                          << "making";
                if (signal == 0)
                    _exit(0);
                std::signal(SIGABRT, SIG_DFL);
                kill(getpid(), signal);
            },
            {{"DUX_TRACE_REPORT", directory / "report"}, {"ZOR_TRACE_FILE", directory / "trace"}});
        EXPECT_EQ(end.status, -signal);
        EXPECT_EQ(directory.Read("trace"), kName + "Block() {\n" + kName + ": finished 1\n");
        EXPECT_EQ(directory.Read("report"), "_DUX Trace            :Channel\n"
                                            "Channel           : Block\n"
                                            "a module's own line\n");
    }
}

TEST(ZORDuxTrace, WhatIsLeftOfALineInTheReportIsWrittenWhenItIsClosedOrTheProcessExits)
{
    static ZORDuxTrace* kept = nullptr; // to the end, within reach
    enum class End { kLastTrace, kOfReport, kExit };
    for (const End how : {End::kLastTrace, End::kOfReport, End::kExit}) {
        const ScopedDirectory directory;
        Traced(
            [&] {
                char name[] = "Channel";
                kept = new ZORDuxTrace(name, nullptr, nullptr, 2);
                *_gReport << "a module's own line\nin the "
                          << "making";
                if (how == End::kExit)
                    return;
                if (how == End::kLastTrace)
                    delete kept;
                else
                    delete std::exchange(_gReport, nullptr); // by some module
                _exit(0);
            },
            {{"DUX_TRACE_REPORT", directory / "report"}});
        EXPECT_EQ(
            directory.Read("report"),
            std::string("_DUX Trace            :Channel\na module's own line\nin the making") +
                (how == End::kLastTrace ? "Total trace number = 1\n" : ""));
    }
}

TEST(ZORDuxTrace, AStaticTraceEndsTheReportWhenTheProcessExits)
{
    const ScopedDirectory directory;
    const ChildEnd end = Traced(
        [] {
            static Named named("Channel");
            static const ZORDuxTraceStep step(&named.trace, "Block");
            named.trace << "unfinished";
        },
        {{"DUX_TRACE_REPORT", directory / "report"}});
    EXPECT_EQ(directory.Read("report"), "_DUX Trace            :Channel\n"
                                        "Channel           : Block\n"
                                        "Total trace number = 1\n");
    EXPECT_THAT(end.error, HasSubstr(kName + ": unfinished}\n"));
    EXPECT_EQ(end.status, 0);
}

TEST(ZORDuxTrace, GoesOnWhenTheDiskIsFullAndWritesLinesAfterThat)
{
    const ScopedDirectory directory;
    const ChildEnd end = Traced(
        [] {
            rlimit unlimited;
            getrlimit(RLIMIT_FSIZE, &unlimited);
            rlimit full = unlimited;
            std::signal(SIGXFSZ, SIG_IGN);
            Named named("Channel");
            named.trace.FunctionBegin("Before");
            full.rlim_cur = 1;
            setrlimit(RLIMIT_FSIZE, &full);
            named.trace.FunctionBegin("Lost");
            named.trace.FunctionEnd();
            setrlimit(RLIMIT_FSIZE, &unlimited);
            named.trace.FunctionBegin("After");
        },
        {{"DUX_TRACE_REPORT", directory / "report"}, {"ZOR_TRACE_FILE", directory / "trace"}});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(directory.Read("trace"), kName + "Before() {\n" + kName + ": After() {\n");
    EXPECT_EQ(directory.Read("report"), "_DUX Trace            :Channel\n"
                                        "Channel           : Before\n"
                                        "Channel           : After\n"
                                        "Total trace number = 1\n");
}

TEST(ZORDuxTrace, ReportsToAFullDeviceDoNoHarm)
{
    const ChildEnd end = Traced(
        [] {
            Named named("Channel");
            for (int i = 0; i < 1000; ++i)
                const ZORDuxTraceStep step(&named.trace, "Block");
        },
        {{"DUX_TRACE_REPORT", "/dev/full"}, {"ZOR_TRACE_FILE", "/dev/full"}});
    EXPECT_EQ(end.error, "DUX_TRACE_REPORT: using file /dev/full\n");
    EXPECT_EQ(end.status, 0);
}

TEST(ZORDuxTrace, AGlobalThatAProgramWritesIsTheOneTheLibraryReads)
{
    const ScopedDirectory directory;
    const ChildEnd end = Traced([&] {
        Named named("Channel");
        _gPrintLevelFlag = 1;
        ZORDuxTrace::_gLevel = 1;
        _gTraceTotalNumber = 41;
        named.trace << "text\n";
        _gReport = new std::ofstream(directory / "mine");
        named.trace.FunctionBegin("Unreported");
        named.trace.FunctionEnd();
        _gCoverageReport = 1;
        _gReport->setstate(std::ios::badbit); // as after a line that did not fit
        named.trace.FunctionBegin("Block");
        Print(directory.Read("mine")); // it is there already
    });
    EXPECT_EQ(end.error, kName + "0000 : : text\n" + kName + "0000 : : Unreported() {\n" + kName +
                             "0000 : : }\n" + kName + "0000 : : Block() {\n");
    EXPECT_EQ(end.output, "Channel           : Block\n\n");
    EXPECT_EQ(directory.Read("mine"), "Channel           : Block\nTotal trace number = 41\n");
}

TEST(ZORDuxTrace, HasAScratchBufferOf1024)
{
    static_assert(sizeof BufferAgile == 1024);
    const ChildEnd end = Traced([] {
        Named("Channel").trace << 'x';
        Print(BufferAgile);
    });
    EXPECT_EQ(end.output, "x\n");
}
