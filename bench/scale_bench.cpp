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
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct Measured {
    double seconds;
    double peak; // bytes
    bool right;
};

// Does it once; `iDo` tells whether the result was right.
template <class Do>
Measured Measure(Do iDo)
{
    const PeakMemory memory;
    const double start = ProcessorTime();
    const bool right = iDo();
    const double seconds = ProcessorTime() - start;
    return {seconds, memory.Bytes(), right};
}

// In a process of its own, in which no other row has left anything.
template <class Run>
Measured InChild(Run iRun)
{
    int ends[2];
    Measured measured{};
    if (pipe(ends) != 0)
        return measured;
    const pid_t child = fork();
    if (child == 0) {
        const Measured own = iRun();
        const bool told = write(ends[1], &own, sizeof own) == sizeof own;
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    if (read(ends[0], &measured, sizeof measured) != sizeof measured)
        measured.right = false;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return measured;
}

template <class Run>
void ScaleRow(const char* iCase, long iSize, Run iRun)
{
    Row(iCase, iSize, "ours",
        [=](benchmark::State& ioState) {
            for ([[maybe_unused]] auto each : ioState) {
                const Measured measured = InChild([&] { return iRun(iSize); });
                ioState.SetIterationTime(measured.seconds);
                ioState.counters["peak"] = measured.peak;
                Check(ioState, measured.right);
            }
        })
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

Measured FirstRead(long iSize)
{
    const SettingsOfSize settings(iSize);
    return Measure([&] { return settings.IsThere(); });
}

Measured List(long iSize)
{
    const SettingsOfSize settings(iSize);
    if (!settings.IsThere())
        return {};
    return Measure(
        [&] { return settings.services->ListOfSettingVariables("site").Size() == iSize; });
}

Measured Put(long iSize)
{
    const SettingsOfSize settings(iSize);
    if (!settings.IsThere())
        return {};
    return Measure([&] {
        settings.services->PutSetting("DUX_NEW", "/opt/dux", "site");
        return settings.services->GetSetting("DUX_NEW", "site") == "/opt/dux";
    });
}

Measured Seek(long iSize)
{
    const ScopedDirectory directory;
    const std::string file = directory.Write("file", "here\n");
    std::string path;
    for (long i = 1; i < iSize; ++i)
        path += directory / std::to_string(i) + ":";
    const ZORUnicodeString list(path + directory.Path().string());
    const ZORIDuxServices_var services = CreateServices();
    services->PutSettingSeparator(":");
    return Measure([&] { return services->SeekFile("file", list) == file.c_str(); });
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

Measured Intersect(long iSize)
{
    _SEQUENCE_CORBAAny first = RandomIdentifiers(iSize, 1);
    _SEQUENCE_CORBAAny second = RandomIdentifiers(iSize, 1); // the same
    return Measure([&] { return SequenceCrbAnyIntersection(first, second).length() == iSize; });
}

std::string WriteLines(const ScopedDirectory& iDirectory, long iMegabytes)
{
    const std::string block(99, 'x');
    std::ofstream file(iDirectory / "lines", std::ios::binary);
    for (long i = 0; i < iMegabytes * 10000; ++i)
        file << block << '\n';
    return iDirectory / "lines";
}

Measured ReadLines(long iMegabytes)
{
    const ScopedDirectory directory(Place(false));
    const ZORUnicodeString file(WriteLines(directory, iMegabytes));
    const ZORIDuxServices_var services = CreateServices();
    return Measure([&] { return services->ReadStream(file).Size() == iMegabytes * 10000; });
}

Measured WriteLinesBack(long iMegabytes)
{
    const ScopedDirectory directory(Place(false));
    const ZORIDuxServices_var services = CreateServices();
    const ZORListValZORUnicodeString lines =
        services->ReadStream(WriteLines(directory, iMegabytes).c_str());
    return Measure([&] { return services->WriteStream(lines, (directory / "copy").c_str()) == 1; });
}

void CountCall(ZORBaseUnknown*, const char*, ZORNotification*, void* iCalls)
{
    ++*static_cast<long*>(iCalls);
}

Measured Dispatch(long iSize)
{
    long calls = 0;
    return Measure([&] {
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
Measured TakeSubscribersBack(long iSize)
{
    std::vector<ZORBaseUnknown> subscribers(static_cast<std::size_t>(iSize));
    std::vector<ZORBaseUnknown*> order;
    for (ZORBaseUnknown& each : subscribers)
        order.push_back(&each);
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    long taken = 0;
    return Measure([&] {
        ZORCallbackManager manager;
        for (ZORBaseUnknown& each : subscribers)
            manager.AddCallback("PartOpened", CountCall, nullptr, &each);
        for (const ZORBaseUnknown* const each : order)
            taken += manager.RemoveSubscriberCallbacks(each);
        return taken == iSize && manager.GetNbCallbacks("PartOpened") == 0;
    });
}

// One subscriber of as many events, each taken back, in another order.
Measured TakeEventsBack(long iSize)
{
    const std::vector<std::string> events = Names("PartChanged", iSize);
    std::vector<std::string> order = events;
    std::sort(order.begin(), order.end());
    ZOREventSubscriber subscriber;
    long taken = 0;
    return Measure([&] {
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

class Classes
{
public:
    explicit Classes(long iSize) : _Names(Names("Part", iSize)) {}
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

Measured RegisterClasses(long iSize)
{
    const Classes classes(iSize);
    return Measure([&] {
        classes.Register();
        return classes.Each(IsRegistered);
    });
}

// `iDo` is done with each of as many registered classes.
template <class Do>
auto WithClasses(Do iDo)
{
    return [iDo](long iSize) {
        const Classes classes(iSize);
        classes.Register();
        return Measure([&] { return classes.Each(iDo); });
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
