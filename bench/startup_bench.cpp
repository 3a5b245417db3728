// What a process takes of the processor until it can work, beside a C++ program that does nothing.
// "over empty" is the difference of two programs that run one after the other.

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "support/Rows.h"

#include <algorithm>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

namespace
{

double Seconds(const timeval& iTime)
{
    return static_cast<double>(iTime.tv_sec) + static_cast<double>(iTime.tv_usec) * 1e-6;
}

// Runs a program and returns what it took; its output goes nowhere. Fails the row when it fails.
double Run(benchmark::State& ioState, std::vector<const char*> iCommand)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", 1 /* O_WRONLY */, 0);
    iCommand.push_back(nullptr);
    pid_t child = 0;
    const int spawned = posix_spawn(&child, iCommand[0], &actions, nullptr,
                                    const_cast<char* const*>(iCommand.data()), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    rusage usage{};
    if (spawned == 0)
        wait4(child, &status, 0, &usage);
    Check(ioState, status == 0);
    return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

template <class Time>
void ProgramRow(const char* iCase, const char* iWho, Time iTime)
{
    Row(iCase, iWho, [=](benchmark::State& ioState) {
        const ScopedDirectory directory;
        directory.Write("site.toml", "DUX_PATH = \"/usr/share/dux\"\n");
        const ScopedEnvironment settings("ZOR_SETTINGS_PATH", directory.Path().string());
        for ([[maybe_unused]] auto each : ioState)
            ioState.SetIterationTime(iTime(ioState));
    })->UseManualTime();
}

const Rows kRows([] {
    const auto empty = [](benchmark::State& ioState) { return Run(ioState, {KW_EMPTY}); };
    const auto services = [](benchmark::State& ioState) { return Run(ioState, {KW_SERVICES}); };
    ProgramRow("first services object", "ours", services);
    ProgramRow("first services object", "reference", empty);
    ProgramRow("first services object over empty", "ours", [=](benchmark::State& ioState) {
        const double without = empty(ioState);
        return std::max(services(ioState) - without, 0.0);
    });
    ProgramRow("kw4tools settings get", "ours", [](benchmark::State& ioState) {
        return Run(ioState, {KW_KW4TOOLS, "settings", "get", "site", "DUX_PATH"});
    });
});

} // namespace
