#pragma once

#include "ScopedDirectory.h"
#include "support/Rows.h"

#include <random>

// Ten megabytes of lines of 20 to 100 characters, and the number of them. Made once.
struct LinesText {
    LinesText()
    {
        std::mt19937 random(1);
        while (bytes.size() < 10'000'000) {
            bytes.append(20 + random() % 81, 'x') += '\n';
            ++count;
        }
    }
    static const LinesText& Instance()
    {
        static const LinesText text;
        return text;
    }
    std::string bytes;
    std::size_t count = 0;
};

// A way to read: `iRead` takes a path and returns a container of the lines.
template <class Read>
void ReadRow(const std::string& iCase, const std::string& iWho, Read iRead)
{
    Row(iCase, iWho, [=](benchmark::State& ioState) {
        const LinesText& text = LinesText::Instance();
        const ScopedDirectory directory;
        const std::string path = directory.Write("lines", text.bytes);
        for ([[maybe_unused]] auto each : ioState)
            benchmark::DoNotOptimize(iRead(path.c_str()));
        const auto lines = iRead(path.c_str());
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& each : lines)
            ++count;
        Check(ioState, count == text.count);
    })->MinTime(0.1); // a few runs
}

// A way to write: `iWrite` takes lines, made by `iRead`, and a path.
template <class Read, class Write>
void WriteRow(const std::string& iWho, Read iRead, Write iWrite)
{
    Row("write", iWho, [=](benchmark::State& ioState) {
        const LinesText& text = LinesText::Instance();
        const ScopedDirectory directory;
        const auto lines = iRead(directory.Write("lines", text.bytes).c_str());
        const std::string path = directory / "copy";
        for ([[maybe_unused]] auto each : ioState)
            iWrite(lines, path.c_str());
        Check(ioState, directory.Read("copy") == text.bytes);
    })->MinTime(0.1); // a few runs
}
