#include "ZORPSNTrace.h"

#include "CapturedOutput.h"
#include "CountedAllocations.h"
#include "RunProgram.h"
#include "ScopedDirectory.h"
#include "TraceLines.h"
#include "ZORString.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

void Write(ZORPSNTrace& ioTrace, const char* iText)
{
    ioTrace.GetLigne().GetStream() << iText << std::endl;
    ioTrace.Out();
}

void Write(const char* iText)
{
    ZORPSNTrace trace("Writer", 42, nullptr);
    Write(trace, iText);
}

} // namespace

TEST(ZORPSNTrace, IsOffUntilALevelIsSet)
{
    EXPECT_EQ(ZORPSNTrace::GetActiveLevel(), ZORPSNTrace::kOff);
    EXPECT_FALSE(ZORPSNTrace::LevelIsActive(0));
    EXPECT_FALSE(ZORPSNTrace::LevelIsActive(42));
    ZORPSNTrace::SetActiveLevel(42);
    EXPECT_TRUE(ZORPSNTrace::LevelIsActive(42));
    EXPECT_TRUE(ZORPSNTrace::LevelIsActive(0));
    EXPECT_FALSE(ZORPSNTrace::LevelIsActive(43));
}

TEST(ZORPSNTrace, AScopeWritesNothingByItself)
{
    TraceLines lines;
    {
        const ZORPSNTrace trace("Quiet", 42, nullptr);
        const ZORPSNTrace again("Quiet", 42, 0);
    }
    EXPECT_THAT(lines.Taken(), IsEmpty());
}

TEST(ZORPSNTrace, AScopeThatIsOffAllocatesNothing)
{
    TraceLines lines;
    ZORPSNTrace::SetActiveLevel(41);
    const CountedAllocations allocations;
    for (int i = 0; i < 1000; ++i) {
        ZORPSNTrace trace("Quiet", 42, "a text that is longer than any short string holds");
        EXPECT_FALSE(ZORPSNTrace::LevelIsActive(trace.GetLevel()));
    }
    EXPECT_EQ(allocations.Count(), 0);
    EXPECT_THAT(lines.Taken(), IsEmpty());
}

TEST(ZORPSNTrace, IndentsByThreeForEachActiveScopeAround)
{
    const TraceLines lines;
    const ZORPSNTrace outer("Outer", 42, nullptr);
    const ZORPSNTrace passive("Passive", 43, nullptr);
    const ZORPSNTrace inner("Inner", 42, nullptr);
    EXPECT_EQ(outer.GetIndent(), 0);
    EXPECT_EQ(inner.GetIndent(), 3);
    {
        const ZORPSNTrace innermost("Innermost", 1, nullptr);
        EXPECT_EQ(innermost.GetIndent(), 6);
    }
    const ZORPSNTrace next("Next", 42, nullptr);
    EXPECT_EQ(next.GetIndent(), 6);
}

TEST(ZORPSNTrace, AScopeThatOpenedWhileOffIndentsAsTheScopesAround)
{
    TraceLines lines;
    const ZORPSNTrace outer("Outer", 42, nullptr);
    ZORPSNTrace::SetActiveLevel(0);
    const ZORPSNTrace passive("Passive", 42, nullptr);
    ZORPSNTrace::SetActiveLevel(42);
    EXPECT_EQ(passive.GetIndent(), 3);
}

TEST(ZORPSNTrace, AScopeThatIsTurnedOffClosesWithoutALine)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    {
        const ZORPSNTrace trace("Method", 42, nullptr);
        ZORPSNTrace::SetActiveLevel(ZORPSNTrace::kOff);
    }
    EXPECT_THAT(lines.Taken(), ElementsAre("> Method"));
}

TEST(ZORPSNTrace, ASinkMayTrace)
{
    TraceLines lines;
    bool nested = false;
    lines.onLine = [&nested](const std::string&) {
        if (!std::exchange(nested, true))
            Write("from the sink, and longer than the line it was called for");
    };
    Write("first");
    Write("second");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("first", "from the sink, and longer than the line it was called for",
                            "second"));
}

TEST(ZORPSNTrace, ALineWhoseEndWasLostIsEndedAllTheSame)
{
    TraceLines lines;
    ZORPSNTrace trace("Method", 42, nullptr);
    std::ostream& line = trace.GetLigne().GetStream();
    line << "cut short";
    line.setstate(std::ios::badbit);
    line << " by a lack of memory" << std::endl;
    trace.Out();
    Write(trace, "next");
    EXPECT_THAT(lines.Taken(), ElementsAre("cut short", "next"));
}

TEST(ZORPSNTrace, GivesIndentationAndMethodAsTexts)
{
    const ZORPSNTrace trace("Some::Method", 42, nullptr);
    ZORString text;
    EXPECT_STREQ(trace.Indent(text, 5), "     ");
    EXPECT_STREQ(text.ConvertToChar(), "     ");
    for (const int blanks : {31, 32, 33, 100})
        EXPECT_EQ(trace.Indent(text, blanks), std::string(static_cast<std::size_t>(blanks), ' '));
    EXPECT_STREQ(trace.Indent(text, 0), "");
    EXPECT_STREQ(trace.Indent(text, -3), "");
    EXPECT_STREQ(trace.GetMethod(text), "Some::Method");
    EXPECT_EQ(trace.GetLevel(), 42);
}

TEST(ZORPSNTrace, SendsALineWholeAndOnlyWithOut)
{
    TraceLines lines;
    ZORPSNTrace trace("Method", 42, nullptr);
    trace.GetLigne().GetStream() << "one " << 2 << std::flush << ' ' << 3.5 << std::endl;
    EXPECT_THAT(lines.Taken(), IsEmpty());
    trace.Out();
    trace.Out();
    EXPECT_THAT(lines.Taken(), ElementsAre("one 2 3.5"));
}

TEST(ZORPSNTrace, TakesAnEmptyTextThatIsNowhere)
{
    TraceLines lines;
    ZORPSNTrace trace("Method", 42, nullptr);
    trace.GetLigne().GetStream() << std::string_view() << "text" << std::string_view() << std::endl;
    trace.Out();
    EXPECT_THAT(lines.Taken(), ElementsAre("text"));
}

TEST(ZORPSNTrace, WritesALineOfPiecesAsItsStreamWould)
{
    TraceLines lines;
    ZORPSNTrace outer("Outer", 42, nullptr);
    ZORPSNTrace trace("Some::Method", 42, nullptr);
    const std::string text(1'000'000, 'x');
    trace.WriteLine({"iFileName", " = ", text});
    trace.WriteLine({"File is found"});
    trace.WriteLine({});
    trace.GetLigne().GetStream() << "begun ";
    outer.WriteLine({std::string_view(), "a\tb", ""});
    EXPECT_THAT(lines.Taken(), ElementsAre("      Some::Method iFileName = " + text,
                                           "      Some::Method File is found",
                                           "      Some::Method ", "begun    Outer a\tb"));
}

TEST(ZORPSNTrace, ALineOfPiecesIsLostWithItsStream)
{
    TraceLines lines;
    ZORPSNTrace trace("Method", 42, nullptr);
    trace.GetLigne().GetStream() << "cut";
    trace.GetLigne().GetStream().setstate(std::ios_base::badbit);
    trace.WriteLine({" short"});
    trace.WriteLine({"next"});
    EXPECT_THAT(lines.Taken(), ElementsAre("cut", "   Method next"));
}

TEST(ZORPSNTrace, ALineOfPiecesThatFindsNoMemoryIsEndedAllTheSame)
{
    TraceLines lines;
    ZORPSNTrace trace("Method", 42, nullptr);
    trace.WriteLine({"first"});
    const std::string text(1'000'000, 'x');
    ZORPSNTrace::SetSink(nullptr, nullptr);
    CapturedOutput errors(STDERR_FILENO);
    {
        const ScopedMemoryShortage shortage;
        trace.WriteLine({"iText = ", text});
        trace.WriteLine({"next"});
    }
    EXPECT_EQ(errors.Text(), "   Method iText = \n   Method next\n");
}

TEST(ZORPSNTrace, TakesLinesOfAnyLength)
{
    TraceLines lines;
    const std::string text(1'000'000, 'x');
    Write(text.c_str());
    Write("short");
    EXPECT_THAT(lines.Taken(), ElementsAre(text, "short"));
}

TEST(ZORPSNTrace, WritesWhenScopesOpenAndCloseWhereAsked)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    {
        const ZORPSNTrace outer("Outer", 42, nullptr);
        const ZORPSNTrace inner("Inner", 42, "with a text");
    }
    EXPECT_THAT(lines.Taken(),
                ElementsAre("> Outer", "   > Inner with a text", "   < Inner", "< Outer"));
}

TEST(ZORPSNTrace, AnErrorOfTheSinkReachesTheWriterAndLeavesTheLineEmpty)
{
    TraceLines lines;
    lines.onLine = [](const std::string&) { throw 1; };
    EXPECT_THROW(Write("lost"), int);
    lines.onLine = nullptr;
    lines.Taken();
    Write("next");
    EXPECT_THAT(lines.Taken(), ElementsAre("next"));
}

TEST(ZORPSNTrace, AnErrorOfTheSinkDoesNotLeaveAClosingScope)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    {
        const ZORPSNTrace trace("Method", 42, nullptr);
        lines.onLine = [](const std::string&) { throw 1; };
    }
    lines.onLine = nullptr;
    EXPECT_THAT(lines.Taken(), ElementsAre("> Method", "< Method"));
    EXPECT_EQ(ZORPSNTrace("After", 42, nullptr).GetIndent(), 0);
}

TEST(ZORPSNTrace, AnErrorOfTheSinkWhileAScopeOpensLeavesTheDepthAsItWas)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    lines.onLine = [](const std::string&) { throw 1; };
    EXPECT_THROW(ZORPSNTrace("Method", 42, nullptr), int);
    lines.onLine = nullptr;
    EXPECT_EQ(ZORPSNTrace("After", 42, nullptr).GetIndent(), 0);
}

TEST(ZORPSNTrace, WritesToStandardErrorByDefault)
{
    const CapturedOutput output(STDERR_FILENO);
    ZORPSNTrace::SetActiveLevel(42);
    Write("to standard error");
    EXPECT_EQ(output.Text(), "to standard error\n");
}

TEST(ZORPSNTrace, AppendsToAFile)
{
    const ScopedDirectory directory;
    directory.Write("trace", "before\n");
    ZORPSNTrace::SetActiveLevel(42);
    ASSERT_TRUE(ZORPSNTrace::SetFile((directory / "trace").c_str()));
    Write("one");
    ASSERT_TRUE(ZORPSNTrace::SetFile(nullptr));
    {
        const CapturedOutput output(STDERR_FILENO);
        Write("two");
        EXPECT_EQ(output.Text(), "two\n");
    }
    EXPECT_EQ(directory.Read("trace"), "before\none\n");
}

TEST(ZORPSNTrace, HasOneFileOpenAtATimeAndPassesItToNoOtherProgram)
{
    const auto open = [] {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        return std::distance(begin(files), end(files));
    };
    const ScopedDirectory directory;
    const auto before = open();
    for (const char* name : {"one", "two", "three"})
        ASSERT_TRUE(ZORPSNTrace::SetFile((directory / name).c_str()));
    EXPECT_EQ(open(), before + 1);
    int passedOn = 0;
    for (int file = 3; file < 64; ++file)
        if (std::filesystem::exists("/proc/self/fd/" + std::to_string(file)) &&
            std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file)) ==
                directory / "three" &&
            (fcntl(file, F_GETFD) & FD_CLOEXEC) == 0)
            ++passedOn;
    EXPECT_EQ(passedOn, 0);
    ASSERT_TRUE(ZORPSNTrace::SetFile(""));
    EXPECT_EQ(open(), before);
}

TEST(ZORPSNTrace, AFileThatCannotBeOpenedLeavesTheOutputWhereItWas)
{
    const ScopedDirectory directory;
    ZORPSNTrace::SetActiveLevel(42);
    ASSERT_TRUE(ZORPSNTrace::SetFile((directory / "trace").c_str()));
    EXPECT_FALSE(ZORPSNTrace::SetFile((directory / "missing/trace").c_str()));
    Write("still here");
    EXPECT_EQ(directory.Read("trace"), "still here\n");
}

TEST(ZORPSNTrace, LinesOfAKilledProcessAreThere)
{
    const ScopedDirectory directory;
    const pid_t child = fork();
    if (child == 0) {
        ZORPSNTrace::SetActiveLevel(42);
        ZORPSNTrace::SetFile((directory / "trace").c_str());
        Write("one");
        Write("two");
        ZORPSNTrace trace("Method", 42, nullptr);
        trace.GetLigne().GetStream() << "in the making";
        kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(directory.Read("trace"), "one\ntwo\n");
}

TEST(ZORPSNTrace, WritingLeavesErrnoAlone)
{
    ZORPSNTrace::SetActiveLevel(42);
    ASSERT_TRUE(ZORPSNTrace::SetFile("/dev/full"));
    errno = ERANGE;
    Write("does not fit");
    EXPECT_EQ(errno, ERANGE);
}

TEST(ZORPSNTrace, LinesOfSeveralThreadsDoNotMix)
{
    const ScopedDirectory directory;
    ZORPSNTrace::SetActiveLevel(42);
    ASSERT_TRUE(ZORPSNTrace::SetFile((directory / "trace").c_str()));
    std::vector<std::thread> threads;
    for (const char letter : {'a', 'b', 'c', 'd'})
        threads.emplace_back([letter] {
            for (int i = 0; i < 500; ++i)
                Write(std::string(200, letter).c_str());
        });
    for (std::thread& thread : threads)
        thread.join();
    std::map<std::string, int> count;
    std::istringstream lines(directory.Read("trace"));
    for (std::string line; std::getline(lines, line);)
        ++count[line];
    EXPECT_EQ(count.size(), 4U);
    for (const auto& [line, times] : count)
        EXPECT_EQ(times, 500) << line;
}

// The environment is read when the process starts: these run this program again.
namespace
{

using Variables = std::map<std::string, std::optional<std::string>>;

// What the run writes to standard error.
std::string RunAgain(const Variables& iVariables, const std::string& iTest = "WritesALine")
{
    RunProgram program(std::filesystem::read_symlink("/proc/self/exe").string());
    for (const auto& [name, value] : iVariables)
        program.Environment(name, value);
    const RunProgram::Outcome end =
        program({"--gtest_also_run_disabled_tests", "--gtest_filter=*.DISABLED_" + iTest});
    EXPECT_EQ(end.status, 0);
    return end.err;
}

} // namespace

TEST(ZORPSNTraceEnvironment, DISABLED_WritesALine)
{
    ZORPSNTrace trace("Method", 42, nullptr);
    if (ZORPSNTrace::LevelIsActive(trace.GetLevel()))
        Write(trace, "a line");
}

TEST(ZORPSNTraceEnvironment, DISABLED_WritesALineAtExit)
{
    struct AtExit {
        ~AtExit() { Write("at exit"); }
    };
    static const AtExit last;
    Write("before");
}

TEST(ZORPSNTraceEnvironment, StaticObjectsMayTraceWhileTheProgramEnds)
{
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "42"}}, "WritesALineAtExit"), "before\nat exit\n");
}

TEST(ZORPSNTraceEnvironment, TurnsScopesOnByLevel)
{
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "42"}}), "a line\n");
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "100"}}), "a line\n");
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "41"}}), "");
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "-1"}}), "");
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", ""}}), "");
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", std::nullopt}}), "");
}

TEST(ZORPSNTraceEnvironment, ToldOfALevelThatIsNoNumber)
{
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "all"}}),
              "ZOR_PSN_TRACE: \"all\" is not a level (a whole number)\n");
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "42x"}}),
              "ZOR_PSN_TRACE: \"42x\" is not a level (a whole number)\n");
}

TEST(ZORPSNTraceEnvironment, NamesTheFile)
{
    const ScopedDirectory directory;
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "42"}, {"ZOR_PSN_TRACE_FILE", directory / "trace"}}), "");
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "42"}, {"ZOR_PSN_TRACE_FILE", ""}}), "a line\n");
    EXPECT_EQ(directory.Read("trace"), "a line\n");
}

TEST(ZORPSNTraceEnvironment, AFileThatCannotBeOpenedIsToldOnce)
{
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "42"}, {"ZOR_PSN_TRACE_FILE", "/nowhere/trace"}}),
              "ZOR_PSN_TRACE_FILE: cannot open /nowhere/trace: No such file or directory\n"
              "a line\n");
}

TEST(ZORPSNTraceEnvironment, AsksForCallLines)
{
    EXPECT_EQ(RunAgain({{"ZOR_PSN_TRACE", "42"}, {"ZOR_PSN_TRACE_CALLS", "1"}}),
              "> Method\na line\n< Method\n");
}
