// What grows with the size of things, each measured once: a settings file that is read for the
// first time, listed, put to; a path; lists of identifiers; line files; subscribers of an event.

#include "CreateServices.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "ZORCallbackManager.h"
#include "ZORConfigServices.h"
#include "settings_rows.h"

#include <cstring>
#include <fstream>
#include <random>

namespace
{

// Times `iDo` once, which tells whether the result was right.
template <class Do>
void Time(benchmark::State& ioState, Do iDo)
{
    for ([[maybe_unused]] auto each : ioState) {
        const double start = ProcessorTime();
        const bool right = iDo();
        ioState.SetIterationTime(ProcessorTime() - start);
        Check(ioState, right);
    }
}

template <class Run>
void ScaleRow(const char* iCase, long iSize, Run iRun)
{
    Row(iCase, iSize, "ours", [=](benchmark::State& ioState) { iRun(ioState, iSize); })
        ->Iterations(1)
        ->Repetitions(1)
        ->UseManualTime();
}

struct SettingsOfSize {
    explicit SettingsOfSize(long iSize)
        : variable("ZOR_SETTINGS_PATH", directory.Path().string()), last(std::to_string(iSize - 1))
    {
        std::ofstream file(directory / "site.toml");
        for (long i = 0; i < iSize; ++i)
            file << "DUX_SETTING_" << i << " = \"/usr/share/dux/part/" << i << "\"\n";
    }
    const ScopedDirectory directory{Place(false)};
    const ScopedEnvironment variable;
    const ZORIDuxServices_var services = CreateServices();
    const std::string last;

    std::string Get() const
    {
        return services->GetSetting(("DUX_SETTING_" + last).c_str(), "site").ConvertToChar();
    }
    bool IsThere() const { return Get() == "/usr/share/dux/part/" + last; }
};

void FirstRead(benchmark::State& ioState, long iSize)
{
    const SettingsOfSize settings(iSize);
    Time(ioState, [&] { return settings.IsThere(); });
}

void List(benchmark::State& ioState, long iSize)
{
    const SettingsOfSize settings(iSize);
    Check(ioState, settings.IsThere());
    Time(ioState,
         [&] { return settings.services->ListOfSettingVariables("site").Size() == iSize; });
}

void Put(benchmark::State& ioState, long iSize)
{
    const SettingsOfSize settings(iSize);
    Check(ioState, settings.IsThere());
    Time(ioState, [&] {
        settings.services->PutSetting("DUX_NEW", "/opt/dux", "site");
        return settings.services->GetSetting("DUX_NEW", "site") == "/opt/dux";
    });
}

void Seek(benchmark::State& ioState, long iSize)
{
    const ScopedDirectory directory;
    const std::string file = directory.Write("file", "here\n");
    std::string path;
    for (long i = 1; i < iSize; ++i)
        path += directory / std::to_string(i) + ":";
    const ZORUnicodeString list(path + directory.Path().string());
    const ZORIDuxServices_var services = CreateServices();
    services->PutSettingSeparator(":");
    Time(ioState, [&] { return services->SeekFile("file", list) == file.c_str(); });
}

_SEQUENCE_CORBAAny RandomIdentifiers(long iSize, unsigned iSeed)
{
    std::mt19937_64 random(iSeed);
    _SEQUENCE_CORBAAny list;
    list.maximum(iSize);
    list.length(iSize);
    _SEQUENCE_octet identifier;
    identifier.maximum(16);
    identifier.length(16);
    for (int i = 0; i < iSize; ++i) {
        const std::uint64_t octets[] = {random(), random()};
        std::memcpy(identifier.buffer(), octets, sizeof octets);
        list[i] << identifier;
    }
    return list;
}

void Intersect(benchmark::State& ioState, long iSize)
{
    _SEQUENCE_CORBAAny first = RandomIdentifiers(iSize, 1);
    _SEQUENCE_CORBAAny second = RandomIdentifiers(iSize, 1); // the same
    Time(ioState, [&] { return SequenceCrbAnyIntersection(first, second).length() == iSize; });
}

std::string WriteLines(const ScopedDirectory& iDirectory, long iMegabytes)
{
    const std::string block(99, 'x');
    std::ofstream file(iDirectory / "lines", std::ios::binary);
    for (long i = 0; i < iMegabytes * 10000; ++i)
        file << block << '\n';
    return iDirectory / "lines";
}

void ReadLines(benchmark::State& ioState, long iMegabytes)
{
    const ScopedDirectory directory(Place(false));
    const ZORUnicodeString file(WriteLines(directory, iMegabytes));
    const ZORIDuxServices_var services = CreateServices();
    Time(ioState, [&] { return services->ReadStream(file).Size() == iMegabytes * 10000; });
}

void WriteLinesBack(benchmark::State& ioState, long iMegabytes)
{
    const ScopedDirectory directory(Place(false));
    const ZORIDuxServices_var services = CreateServices();
    const ZORListValZORUnicodeString lines =
        services->ReadStream(WriteLines(directory, iMegabytes).c_str());
    Time(ioState, [&] { return services->WriteStream(lines, (directory / "copy").c_str()) == 1; });
}

void CountCall(ZORBaseUnknown*, const char*, ZORNotification*, void* iCalls)
{
    ++*static_cast<long*>(iCalls);
}

void Dispatch(benchmark::State& ioState, long iSize)
{
    long calls = 0;
    Time(ioState, [&] {
        ZORCallbackManager manager;
        for (long i = 0; i < iSize; ++i)
            manager.AddCallback("PartOpened", CountCall, &calls);
        manager.DispatchCallbacks("PartOpened", nullptr, nullptr);
        return calls == iSize;
    });
}

const Rows kRows([] {
    for (const long names : {1000, 10000, 100000}) {
        ScaleRow("settings, first read", names, FirstRead);
        ScaleRow("settings, list", names, List);
        ScaleRow("settings, put", names, Put);
    }
    for (const long directories : {100, 1000, 10000})
        ScaleRow("SeekFile", directories, Seek);
    for (const long identifiers : {10000, 100000, 1000000, 10000000})
        ScaleRow("intersect", identifiers, Intersect);
    for (const long megabytes : {10, 100, 1000}) {
        ScaleRow("read megabytes", megabytes, ReadLines);
        ScaleRow("write megabytes", megabytes, WriteLinesBack);
    }
    for (const long subscribers : {1000, 10000, 100000})
        ScaleRow("add and dispatch", subscribers, Dispatch);
});

} // namespace
