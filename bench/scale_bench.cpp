// What grows with the size of things, each measured once, with the memory it takes: a settings file
// that is read for the first time, listed, put to; a path; lists of identifiers; line files;
// subscribers of an event; classes.

#include "CreateServices.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "ZORCallbackManager.h"
#include "ZORConfigServices.h"
#include "ZOREventSubscriber.h"
#include "ZORObject.h"
#include "ZORTie.h"
#include "settings_rows.h"
#include "support/PeakMemory.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <random>

namespace
{

// Measures `iDo` once, which tells whether the result was right.
template <class Do>
void Measure(benchmark::State& ioState, Do iDo)
{
    for ([[maybe_unused]] auto each : ioState) {
        const PeakMemory memory;
        const double start = ProcessorTime();
        const bool right = iDo();
        ioState.SetIterationTime(ProcessorTime() - start);
        ioState.counters["peak"] = memory.Bytes();
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
    Measure(ioState, [&] { return settings.IsThere(); });
}

void List(benchmark::State& ioState, long iSize)
{
    const SettingsOfSize settings(iSize);
    Check(ioState, settings.IsThere());
    Measure(ioState,
            [&] { return settings.services->ListOfSettingVariables("site").Size() == iSize; });
}

void Put(benchmark::State& ioState, long iSize)
{
    const SettingsOfSize settings(iSize);
    Check(ioState, settings.IsThere());
    Measure(ioState, [&] {
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
    Measure(ioState, [&] { return services->SeekFile("file", list) == file.c_str(); });
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
    Measure(ioState, [&] { return SequenceCrbAnyIntersection(first, second).length() == iSize; });
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
    Measure(ioState, [&] { return services->ReadStream(file).Size() == iMegabytes * 10000; });
}

void WriteLinesBack(benchmark::State& ioState, long iMegabytes)
{
    const ScopedDirectory directory(Place(false));
    const ZORIDuxServices_var services = CreateServices();
    const ZORListValZORUnicodeString lines =
        services->ReadStream(WriteLines(directory, iMegabytes).c_str());
    Measure(ioState,
            [&] { return services->WriteStream(lines, (directory / "copy").c_str()) == 1; });
}

void CountCall(ZORBaseUnknown*, const char*, ZORNotification*, void* iCalls)
{
    ++*static_cast<long*>(iCalls);
}

void Dispatch(benchmark::State& ioState, long iSize)
{
    long calls = 0;
    Measure(ioState, [&] {
        ZORCallbackManager manager;
        for (long i = 0; i < iSize; ++i)
            manager.AddCallback("PartOpened", CountCall, &calls);
        manager.DispatchCallbacks("PartOpened", nullptr, nullptr);
        return calls == iSize;
    });
}

std::vector<std::string> Names(const char* iStem, long iSize)
{
    std::vector<std::string> names;
    for (long i = 0; i < iSize; ++i)
        names.push_back(iStem + std::to_string(i));
    std::shuffle(names.begin(), names.end(), std::mt19937(1));
    return names;
}

// As many subscribers of one event, each taken back, in another order.
void TakeSubscribersBack(benchmark::State& ioState, long iSize)
{
    std::vector<ZORBaseUnknown> subscribers(static_cast<std::size_t>(iSize));
    std::vector<ZORBaseUnknown*> order;
    for (ZORBaseUnknown& each : subscribers)
        order.push_back(&each);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    long taken = 0;
    Measure(ioState, [&] {
        ZORCallbackManager manager;
        for (ZORBaseUnknown& each : subscribers)
            manager.AddCallback("PartOpened", CountCall, nullptr, &each);
        for (const ZORBaseUnknown* const each : order)
            taken += manager.RemoveSubscriberCallbacks(each);
        return taken == iSize && manager.GetNbCallbacks("PartOpened") == 0;
    });
}

// One subscriber of as many events, each taken back, in another order.
void TakeEventsBack(benchmark::State& ioState, long iSize)
{
    const std::vector<std::string> events = Names("PartChanged", iSize);
    std::vector<std::string> order = events;
    std::sort(order.begin(), order.end());
    ZOREventSubscriber subscriber;
    long taken = 0;
    Measure(ioState, [&] {
        ZORCallbackManager manager;
        for (const std::string& each : events)
            subscriber.AddCallback(&manager, each.c_str(), CountCall, nullptr);
        for (const std::string& each : order)
            taken += subscriber.RemoveCallbacksOn(&manager, each.c_str());
        return taken == iSize;
    });
}

class BenchIPart : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
};
ZOR_IMPLEMENT_CLASS(BenchIPart, ZORKindInterface, ZORBaseUnknown)

class TIEBenchIPartZORObject final : public BenchIPart
{
    ZOR_DECLARE_TIE(BenchIPart, ZORObject)
};
ZOR_IMPLEMENT_TIE(BenchIPart, ZORObject, ZORKindTie)

// Classes that are registered stay so: each row has its own.
class Classes
{
public:
    explicit Classes(long iSize)
        : _Names(Names(("Part" + std::to_string(++_Made) + '_').c_str(), iSize))
    {
    }
    void Register() const
    {
        for (const std::string& each : _Names) {
            ZORRegisterClass(each.c_str(), ZORKindImplementation, ZORObject::MetaObject());
            AddDictionary(GUID{}, nullptr, each.c_str(), "BenchIPart", CreateTIEBenchIPartZORObject,
                          nullptr, nullptr, 0);
        }
    }
    // Whether it is so for each of them.
    template <class Is>
    bool Each(Is iIs) const
    {
        return std::all_of(_Names.begin(), _Names.end(),
                           [&](const std::string& iName) { return iIs(iName.c_str()); });
    }

private:
    static inline int _Made = 0;
    const std::vector<std::string> _Names;
};

bool IsRegistered(const char* iClass)
{
    return QueryMetaObject(iClass) != nullptr;
}

bool HasInterface(const char* iClass)
{
    const auto object = ZORBaseUnknown_var::Adopt(new ZORObject(nullptr, iClass));
    return ZORHandle<BenchIPart>(object).Get() != nullptr;
}

bool Withdraw(const char* iClass)
{
    return RemoveDictionary(iClass, "BenchIPart") == 1;
}

void RegisterClasses(benchmark::State& ioState, long iSize)
{
    const Classes classes(iSize);
    Measure(ioState, [&] {
        classes.Register();
        return true;
    });
    Check(ioState, classes.Each(IsRegistered) && classes.Each(Withdraw));
}

// `iDo` is done with each of as many registered classes.
template <class Do>
auto WithClasses(Do iDo)
{
    return [iDo](benchmark::State& ioState, long iSize) {
        const Classes classes(iSize);
        classes.Register();
        Measure(ioState, [&] { return classes.Each(iDo); });
        classes.Each(Withdraw);
    };
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
    for (const long subscribers : {1000, 10000, 100000}) {
        ScaleRow("subscribers, add and dispatch", subscribers, Dispatch);
        ScaleRow("subscribers, take back", subscribers, TakeSubscribersBack);
        ScaleRow("events, take back", subscribers, TakeEventsBack);
    }
    for (const long classes : {1000, 10000, 100000}) {
        ScaleRow("classes, register", classes, RegisterClasses);
        ScaleRow("classes, look up by name", classes, WithClasses(IsRegistered));
        ScaleRow("classes, query an interface", classes, WithClasses(HasInterface));
        ScaleRow("classes, withdraw an interface", classes, WithClasses(Withdraw));
    }
});

} // namespace
