#pragma once

#include "ScopedDirectory.h"
#include "support/Rows.h"

#include <string>

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

// The same number of lines for everyone: the files grow alike.
template <class Run>
void LineRow(const std::string& iWho, Run iRun)
{
    Row("on", iWho, std::move(iRun))->Iterations(100'000);
}
