// report: what the coverage reports of the trace tell.

#include "Commands.h"
#include "Failure.h"
#include "Json.h"
#include "LineReader.h"
#include "Program.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace
{

// A function, and the trace that it was entered under.
struct Function {
    std::string trace;
    std::string name;

    bool operator<(const Function& iOther) const
    {
        return std::tie(trace, name) < std::tie(iOther.trace, iOther.name);
    }
};

using Entries = std::map<Function, std::size_t>; // how often each was entered

// Whether a line says of a whole trace that it was made, or at the end how many were.
bool IsOfTrace(std::string_view iLine)
{
    return iLine.starts_with("_DUX Trace            :") ||
           iLine.starts_with("_DUX Trace [Inactive] : ") ||
           iLine.starts_with("Total trace number = ");
}

// The trace and the function of a line about an entry: the name of the trace in a field of 16
// bytes, possibly in colour, " : " and the function.
std::optional<Function> EnteredFunction(std::string_view iLine)
{
    constexpr std::string_view colour = "\033[36m", colourEnd = "\033[37m", separator = "  : ";
    constexpr std::size_t field = 16;
    const bool coloured = iLine.starts_with(colour);
    if (coloured)
        iLine.remove_prefix(colour.size());
    if (iLine.size() < field)
        return std::nullopt;
    std::string_view trace = iLine.substr(0, field);
    trace = trace.substr(0, trace.find_last_not_of(' ') + 1);
    iLine.remove_prefix(field);
    if (coloured && iLine.starts_with(colourEnd))
        iLine.remove_prefix(colourEnd.size());
    if (!iLine.starts_with(separator))
        return std::nullopt;
    return Function{std::string(trace), std::string(iLine.substr(separator.size()))};
}

void Count(const std::string& iFile, Entries& ioEntries)
{
    LineReader report(iFile);
    while (report.Next()) {
        std::string_view line = report.Line();
        if (line.ends_with('\n'))
            line.remove_suffix(1);
        if (const auto entered = EnteredFunction(line))
            ++ioEntries[*entered];
        else if (!IsOfTrace(line))
            throw Failure(report.Place() + " is no line of a trace coverage report, as " +
                          "DUX_TRACE_REPORT has it written");
    }
}

struct Row {
    Function function;
    std::size_t count;
};

// Most often entered first; those alike in the order of their names.
std::vector<Row> ByCount(const Entries& iEntries)
{
    std::vector<Row> rows;
    for (const auto& [function, count] : iEntries)
        rows.push_back({function, count});
    std::stable_sort(rows.begin(), rows.end(), [](const Row& iLeft, const Row& iRight) {
        return iLeft.count > iRight.count;
    });
    return rows;
}

std::string AsLine(const Row& iRow)
{
    constexpr std::size_t width = 8;
    const std::string count = std::to_string(iRow.count);
    return std::string(width - std::min(width, count.size()), ' ') + count + "  " +
           iRow.function.trace + "  " + iRow.function.name;
}

Json AsJson(const Row& iRow)
{
    return Json::Object()
        .Add("count", iRow.count)
        .Add("trace", iRow.function.trace)
        .Add("function", iRow.function.name);
}

} // namespace

void AddReportCommand(Program& ioProgram)
{
    Command& report = ioProgram.Add("Diagnostics", "report",
                                    "Print which traced functions were entered how often");
    const std::vector<std::string>& files =
        report.Arguments("FILE",
                         "A trace coverage report, \"-\" for standard input; those of several\n"
                         "runs are added up",
                         Completion::File);
    const bool& json = report.JsonFlag();
    report.Explains(
        "A program writes a report to the file that DUX_TRACE_REPORT names. Prints, most\n"
        "often entered first, how often, the first 16 characters of the trace's name, and\n"
        "the function. As JSON: an array of {\"count\":N,\"trace\":NAME,\"function\":NAME}.");
    report.Example("kw4tools report monday.report tuesday.report");
    report.Does([&](Session& ioSession) {
        if (files.empty())
            throw UsageError("FILE is required");
        Entries entries;
        for (const std::string& each : files)
            Count(each, entries);
        const std::vector<Row> rows = ByCount(entries);
        if (json)
            ioSession.Out().Line(Json::ArrayOf(rows, AsJson).Text());
        else
            for (const Row& each : rows)
                ioSession.Out().Line(AsLine(each));
        return Status::Yes;
    });
}
