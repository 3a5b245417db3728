#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <time.h>
#include <utility>

// The rows of an area's table, of which there is one for each case, size and way to do it:
//
//     const Rows kRows([] {
//         for (const int names : {10, 1000}) {
//             Row("unchanged", names, "ours", [=](benchmark::State& ioState) { … });
//             Row("unchanged", names, "reference", …
//         }
//     });
//
// The ways are "ours", "reference" and the names of the peers. Each ends with Check. A row whose
// time is not the processor's (waiting for a disk) says UseRealTime(); one that measures a part of
// what it does says UseManualTime(), and takes ProcessorTime() before and after.

struct Rows {
    template <class Register>
    explicit Rows(Register iRegister)
    {
        iRegister();
    }
};

template <class Run>
benchmark::internal::Benchmark* Row(const std::string& iCase, const std::string& iWho, Run iRun)
{
    return benchmark::RegisterBenchmark((iCase + '/' + iWho).c_str(), std::move(iRun));
}

template <class Run>
benchmark::internal::Benchmark* Row(const std::string& iCase, long iSize, const std::string& iWho,
                                    Run iRun)
{
    return Row(iCase + '/' + std::to_string(iSize), iWho, std::move(iRun));
}

// Every way has to come to the same result; a row that does not has no time.
inline void Check(benchmark::State& ioState, bool iSame)
{
    if (!iSame)
        ioState.SkipWithError("another result");
}

// What this thread has taken of the processor's time, in seconds.
inline double ProcessorTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}
