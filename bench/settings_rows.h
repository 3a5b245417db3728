#pragma once

// The rows of each way to keep settings in a file. A way is a class:
//
//     struct Way {
//         using Text = …;                                 made from a const char*
//         static constexpr bool kSyncs = …;               a put has reached the disk
//         static void Write(const std::string& iPath, const Settings& iSettings);
//         explicit Way(const std::string& iPath);         the file is there, and stays
//         auto Get(const Text& iName);                    the value
//         auto List();                                    the names
//         void Put(const Text& iName, const Text& iValue);
//         void PutByAnother(const Text& iName, const Text& iValue);  if it keeps the file open
//     };
//
// whose calls see what anybody else has done to the file before.

#include "ScopedDirectory.h"
#include "support/Rows.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <stdio.h>
#include <thread>

struct Settings {
    std::vector<std::string> names;
    std::vector<std::string> values;

    explicit Settings(int iCount)
    {
        for (int i = 0; i < iCount; ++i) {
            names.push_back("DUX_SETTING_" + std::to_string(1000000 + i)); // sorted
            values.push_back("/usr/share/dux/part/" + std::to_string(i));
        }
    }
    std::size_t Middle() const { return names.size() / 2; }
};

// A directory on the disk, or in memory where the system has one there.
inline std::filesystem::path Place(bool iDisk)
{
    return iDisk                                  ? "/var/tmp"
           : std::filesystem::exists("/dev/shm/") ? "/dev/shm"
                                                  : std::filesystem::temp_directory_path();
}

// A settings file of a way. Its times are older than the clock's grain, as they mostly are.
template <class Way>
struct SettingsFile {
    explicit SettingsFile(int iCount, bool iDisk = false)
        : settings(iCount), directory(Place(iDisk)), path(directory / "site.toml")
    {
        Way::Write(path, settings);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    Settings settings;
    ScopedDirectory directory;
    std::string path;
};

template <class Way>
void Unchanged(benchmark::State& ioState, int iCount)
{
    const SettingsFile<Way> file(iCount);
    const auto& [names, values] = file.settings;
    const std::vector<typename Way::Text> texts(names.begin(), names.end());
    Way way(file.path);
    auto next = texts.begin();
    for ([[maybe_unused]] auto each : ioState) {
        benchmark::DoNotOptimize(way.Get(*next));
        if (++next == texts.end())
            next = texts.begin();
    }
    for (std::size_t i = 0; i < names.size(); ++i)
        Check(ioState, way.Get(texts[i]) == typename Way::Text(values[i].c_str()));
}

// Somebody has changed a value in the middle; that is read.
template <class Way>
void Changed(benchmark::State& ioState, int iCount)
{
    SettingsFile<Way> file(iCount);
    const std::string other = file.directory / "other.toml";
    const std::size_t middle = file.settings.Middle();
    const typename Way::Text name(file.settings.names[middle].c_str());
    const typename Way::Text before(file.settings.values[middle].c_str());
    file.settings.values[middle] = "/opt/dux";
    const typename Way::Text after(file.settings.values[middle].c_str());
    Way::Write(other, file.settings);
    Way way(file.path);
    const auto change = [&](const typename Way::Text& iValue) {
        if constexpr (requires { way.PutByAnother(name, iValue); })
            way.PutByAnother(name, iValue);
        else
            renameat2(AT_FDCWD, file.path.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
    };
    bool changed = false;
    for ([[maybe_unused]] auto each : ioState) {
        changed = !changed;
        change(changed ? after : before);
        const double start = ProcessorTime();
        const auto value = way.Get(name);
        ioState.SetIterationTime(ProcessorTime() - start);
        Check(ioState, value == (changed ? after : before));
    }
}

template <class Way>
void List(benchmark::State& ioState, int iCount)
{
    const SettingsFile<Way> file(iCount);
    Way way(file.path);
    for ([[maybe_unused]] auto each : ioState)
        benchmark::DoNotOptimize(way.List());
    std::size_t count = 0;
    for (const auto& each : way.List())
        count += each == typename Way::Text(file.settings.names[count].c_str());
    Check(ioState, count == file.settings.names.size());
}

template <class Way>
void Put(benchmark::State& ioState, int iCount, bool iDisk)
{
    const SettingsFile<Way> file(iCount, iDisk);
    const typename Way::Text name(file.settings.names[file.settings.Middle()].c_str());
    const typename Way::Text values[] = {"/opt/dux", "/usr/local/share/dux"};
    Way way(file.path);
    std::size_t puts = 0;
    for ([[maybe_unused]] auto each : ioState)
        way.Put(name, values[puts++ % 2]);
    Check(ioState, Way(file.path).Get(name) == values[(puts - 1) % 2]);
}

template <class Way>
void SettingsRows(const std::string& iWho)
{
    for (const int count : {10, 1000}) {
        const auto row = [&](const std::string& iCase, auto iRun) {
            return Row(iCase, count, iWho, iRun);
        };
        row("unchanged", [=](benchmark::State& ioState) { Unchanged<Way>(ioState, count); });
        row("changed", [=](benchmark::State& ioState) {
            Changed<Way>(ioState, count);
        })->UseManualTime();
        row("list", [=](benchmark::State& ioState) { List<Way>(ioState, count); });
        row("put/tmpfs", [=](benchmark::State& ioState) { Put<Way>(ioState, count, false); });
        if (Way::kSyncs)
            row("put/disk", [=](benchmark::State& ioState) {
                Put<Way>(ioState, count, true);
            })->UseRealTime();
    }
}
