// Traces: what a scope costs while it is off, and what a line costs that goes to a file.
#include "traces_rows.h"

#include "ZORPSNTrace.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace
{

constexpr int kLevel = 42;
constexpr char kMethod[] = "ZORDuxServices::GetSetting";

// ---- Off

// What an operation of the services begins with.
[[gnu::noinline]] void WriteLine(ZORPSNTrace& ioTrace, const char* iFileName)
{
    ioTrace.WriteLine({"iFileName = ", iFileName});
}

inline void TracedOperation(const char* iFileName)
{
    ZORPSNTrace trace(kMethod, kLevel, nullptr);
    if (ZORPSNTrace::LevelIsActive(trace.GetLevel()))
        WriteLine(trace, iFileName);
}

std::atomic<int> activeLevel{0};

// ---- A line to a file, which the kernel has when the writer goes on

void MethodLine(benchmark::State& ioState)
{
    const LineFile file;
    ZORPSNTrace::SetFile(file.Path());
    ZORPSNTrace::SetActiveLevel(kLevel);
    for (auto _ : ioState)
        TracedOperation(kFileName);
    ZORPSNTrace::SetActiveLevel(ZORPSNTrace::kOff);
    ZORPSNTrace::SetFile(nullptr);
    Check(ioState, file.Holds(ioState.iterations(), kMethodLine));
}

void StreamLine(benchmark::State& ioState)
{
    const LineFile file;
    std::ofstream stream(file.Path(), std::ios::app);
    for (auto _ : ioState)
        stream << "   " << kMethod << " iFileName = " << kFileName << std::endl;
    Check(ioState, file.Holds(ioState.iterations(), kMethodLine));
}

void PrintedLine(benchmark::State& ioState)
{
    const LineFile file;
    std::FILE* const stream = std::fopen(file.Path(), "a");
    for (auto _ : ioState) {
        std::fprintf(stream, "   %s iFileName = %s\n", kMethod, kFileName);
        std::fflush(stream);
    }
    std::fclose(stream);
    Check(ioState, file.Holds(ioState.iterations(), kMethodLine));
}

// Copies its pieces into one line, and writes it.
class WrittenLine
{
public:
    explicit WrittenLine(const LineFile& iFile)
        : _Descriptor(open(iFile.Path(), O_WRONLY | O_APPEND | O_CLOEXEC))
    {
    }
    ~WrittenLine() { close(_Descriptor); }
    WrittenLine(const WrittenLine&) = delete;
    WrittenLine& operator=(const WrittenLine&) = delete;

    WrittenLine& operator<<(std::string_view iText)
    {
        std::memcpy(_Line + _Length, iText.data(), iText.size());
        _Length += iText.size();
        return *this;
    }
    void Send()
    {
        benchmark::DoNotOptimize(write(_Descriptor, _Line, _Length));
        _Length = 0;
    }

private:
    int _Descriptor;
    char _Line[256];
    std::size_t _Length = 0;
};

void MethodLineByHand(benchmark::State& ioState)
{
    const LineFile file;
    WrittenLine line(file);
    const char* method = kMethod;
    const char* fileName = kFileName;
    benchmark::DoNotOptimize(method);
    benchmark::DoNotOptimize(fileName);
    for (auto _ : ioState) {
        line << "   " << method << " iFileName = " << fileName << "\n";
        line.Send();
    }
    Check(ioState, file.Holds(ioState.iterations(), kMethodLine));
}

const Rows kRows([] {
    const auto testFlag = [](int& ioLines) {
        if (kLevel <= activeLevel.load(std::memory_order_relaxed))
            ++ioLines;
    };
    OffRow("off", "ours", [](int&) { const ZORPSNTrace trace(kMethod, kLevel, nullptr); });
    OffRow("off", "reference", testFlag);
    OffRow("off with a line", "ours", [](int&) { TracedOperation(kFileName); });
    OffRow("off with a line", "reference", [=](int& ioLines) {
        testFlag(ioLines); // of the scope
        testFlag(ioLines); // of the line
    });
    LineRow("ours", MethodLine);
    LineRow("reference", MethodLineByHand);
    LineRow("ofstream", StreamLine);
    LineRow("stdio", PrintedLine);
});

} // namespace
