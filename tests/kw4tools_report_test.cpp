// kw4tools report

#include "Kw4tools.h"

#include "InChild.h"
#include "ScopedEnvironment.h"
#include "ZORDuxTrace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace
{

// Lets a program enter the functions under traces of those names, and report to the file.
void Report(const std::string& iPath,
            const std::vector<std::pair<std::string, std::vector<const char*>>>& iTraces)
{
    const ScopedEnvironment report("DUX_TRACE_REPORT", iPath);
    const ScopedEnvironment trace("ZOR_TRACE", "search");
    InChild([&] {
        std::vector<std::unique_ptr<ZORDuxTrace>> traces;
        for (auto [name, functions] : iTraces) {
            traces.push_back(std::make_unique<ZORDuxTrace>(name.data(), nullptr, nullptr, 2));
            for (const char* function : functions)
                traces.back()->FunctionBegin(function);
        }
    });
}

} // namespace

TEST(kw4tools_report, PrintsTheFunctionsByTimesEntered)
{
    const Kw4tools program;
    Report(program.Site() / "run", {{"search", {"Open", "Read", "Read", "Close"}},
                                    {"a name of more than sixteen", {"Read", "Read", "Read"}},
                                    {"idle", {}}});
    EXPECT_EQ(program.Result({"report", "run"}), "       3  a name of more t  Read\n"
                                                 "       2  search  Read\n"
                                                 "       1  search  Close\n"
                                                 "       1  search  Open\n");
}

TEST(kw4tools_report, AddsUpSeveralRuns)
{
    Kw4tools program;
    Report(program.Site() / "monday", {{"search", {"Open", "Read"}}});
    Report(program.Site() / "tuesday", {{"search", {"Read", "Close"}}});
    EXPECT_EQ(program.Result({"report", "monday", "tuesday"}), "       2  search  Read\n"
                                                               "       1  search  Close\n"
                                                               "       1  search  Open\n");
    program.Run().Input(program.Site().Read("tuesday"));
    EXPECT_EQ(program.Result({"report", "monday", "-"}),
              program.Result({"report", "monday", "tuesday"}));
}

TEST(kw4tools_report, ReadsReportsInColour)
{
    const Kw4tools program;
    const ScopedEnvironment terminal("TERM", "aixterm");
    const ScopedEnvironment colour("DUX_TRACE_COLOR", "1");
    Report(program.Site() / "run", {{"search", {"Open"}}});
    EXPECT_THAT(program.Site().Read("run"), HasSubstr("\033["));
    EXPECT_EQ(program.Result({"report", "run"}), "       1  search  Open\n");
}

TEST(kw4tools_report, ReadsAReportThatHasNoEndYet)
{
    const Kw4tools program;
    program.Site().Write("run", "_DUX Trace            :search\nsearch            : Open\n");
    EXPECT_EQ(program.Result({"report", "run"}), "       1  search  Open\n");
    program.Site().Write("torn", "search            : Open\nsearch            : Re");
    EXPECT_EQ(program.Result({"report", "torn"}), "       1  search  Open\n"
                                                  "       1  search  Re\n");
    program.Site().Write("empty", "");
    EXPECT_EQ(program.Result({"report", "empty"}), "");
}

TEST(kw4tools_report, TakesNamesOfTracesAndFunctionsAsTheyAre)
{
    const Kw4tools program;
    Report(program.Site() / "run", {{"_DUX Trace", {"_DUX Trace            :x", " : ", ""}},
                                    {"", {"Total trace number = 3"}}});
    EXPECT_EQ(program.Result({"report", "run"}),
              "       1    Total trace number = 3\n"
              "       1  _DUX Trace  \n"
              "       1  _DUX Trace   : \n"
              "       1  _DUX Trace  _DUX Trace            :x\n");
}

TEST(kw4tools_report, PrintsJson)
{
    const Kw4tools program;
    Report(program.Site() / "run", {{"search", {"Open", "Open"}}});
    EXPECT_EQ(program.Result({"report", "run", "--json"}),
              "[{\"count\":2,\"trace\":\"search\",\"function\":\"Open\"}]\n");
}

TEST(kw4tools_report, SaysWhichLineIsNoneOfAReport)
{
    const Kw4tools program;
    program.Site().Write("run", "search            : Open\nsearch: Open\n");
    const auto [status, out, err] = program({"report", "run"});
    EXPECT_EQ(status, 2);
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "kw4tools: line 2 of 'run' is no line of a trace coverage report, as "
                   "DUX_TRACE_REPORT has it written\n");
    EXPECT_THAT(program({"report", "none"}).err, HasSubstr("'none' cannot be opened"));
}
