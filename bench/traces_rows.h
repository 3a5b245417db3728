#pragma once

#include "ScopedDirectory.h"
#include "support/Rows.h"

#include <string>
#include <utility>

// The line that every way of tracing writes, and the file it writes it to.

inline constexpr char kFileName[] = "/home/ann/parts/plate.model";
inline constexpr char kMethodLine[] =
    "   ZORDuxServices::GetSetting iFileName = /home/ann/parts/plate.model\n";

class LineFile
{
public:
    LineFile() : _Path(_Directory.Write("trace.txt", "")) {}

    const char* Path() const { return _Path.c_str(); }
    // Whether it holds the line that many times.
    bool Holds(benchmark::IterationCount iTimes, const std::string& iLine) const
    {
        const std::string text = _Directory.Read("trace.txt");
        return text.size() == static_cast<std::size_t>(iTimes) * iLine.size() &&
               text.starts_with(iLine) && text.ends_with(iLine);
    }

private:
    ScopedDirectory _Directory;
    std::string _Path;
};

// What is off: `iOperation(lines)` would count a line. It is done ten times a turn, as the turn
// itself costs as much.
template <class Operation>
void OffRow(const std::string& iCase, const std::string& iWho, Operation iOperation)
{
    Row(iCase, iWho, [=](benchmark::State& ioState) {
        int lines = 0;
        for (auto _ : ioState)
            [&]<int... kTimes>(std::integer_sequence<int, kTimes...>)
            {
                ((iOperation(lines), benchmark::ClobberMemory(), void(kTimes)), ...);
            }
        (std::make_integer_sequence<int, 10>());
        Check(ioState, lines == 0);
    });
}

// The same number of lines for everyone: the files grow alike.
template <class Run>
void LineRow(const std::string& iWho, Run iRun)
{
    Row("on", iWho, std::move(iRun))->Iterations(100'000);
}
