// Sending an event to many callbacks: the callback manager, the list of functions that one would
// write by hand (which survives no change during a dispatch), and the bare calls.
#include "ZORCallbackManager.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <random>
#include <unordered_map>
#include <vector>

namespace
{

void Count(ZORBaseUnknown*, const char*, ZORNotification*, void* iData)
{
    ++*static_cast<long*>(iData);
}

// Every way calls each callback once for each dispatch.
void Check(benchmark::State& ioState, long iCalls)
{
    const long expected = static_cast<long>(ioState.iterations()) * ioState.range(0);
    if (iCalls != expected)
        ioState.SkipWithError("a callback was not called once");
    ioState.SetItemsProcessed(iCalls);
}

void DispatchByManager(benchmark::State& ioState)
{
    long calls = 0;
    ZORCallbackManager manager;
    for (long i = 0; i < ioState.range(0); ++i)
        manager.AddCallback("PartOpened", Count, &calls);
    for ([[maybe_unused]] auto each : ioState)
        manager.DispatchCallbacks("PartOpened", nullptr, nullptr);
    Check(ioState, calls);
}

void DispatchByFunctionList(benchmark::State& ioState)
{
    long calls = 0;
    using Functions = std::vector<std::function<void(const char*, void*)>>;
    std::unordered_map<std::string, Functions> events;
    for (long i = 0; i < ioState.range(0); ++i)
        events["PartOpened"].push_back([&calls](const char*, void*) { ++calls; });
    for ([[maybe_unused]] auto each : ioState)
        for (const auto& function : events.find("PartOpened")->second)
            function("PartOpened", nullptr);
    Check(ioState, calls);
}

void DispatchByBareCalls(benchmark::State& ioState)
{
    long calls = 0;
    const std::vector<ZORCallbackFunction> functions(static_cast<std::size_t>(ioState.range(0)),
                                                     Count);
    benchmark::DoNotOptimize(functions.data());
    for ([[maybe_unused]] auto each : ioState)
        for (const ZORCallbackFunction function : functions)
            function(nullptr, "PartOpened", nullptr, &calls);
    Check(ioState, calls);
}

// Registers that many callbacks and removes them by handle, in another order.
void AddAndRemove(benchmark::State& ioState)
{
    long calls = 0;
    std::vector<ZORCallback> callbacks(static_cast<std::size_t>(ioState.range(0)));
    std::vector<std::size_t> order(callbacks.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    for ([[maybe_unused]] auto each : ioState) {
        ZORCallbackManager manager;
        for (ZORCallback& callback : callbacks)
            callback = manager.AddCallback("PartOpened", Count, &calls);
        for (const std::size_t i : order)
            manager.RemoveCallback(callbacks[i]);
        if (manager.GetNbCallbacks("PartOpened") != 0)
            ioState.SkipWithError("a callback was not removed");
    }
    ioState.SetItemsProcessed(static_cast<long>(ioState.iterations()) * ioState.range(0));
}

BENCHMARK(DispatchByManager)->RangeMultiplier(16)->Range(1, 4096);
BENCHMARK(DispatchByFunctionList)->RangeMultiplier(16)->Range(1, 4096);
BENCHMARK(DispatchByBareCalls)->RangeMultiplier(16)->Range(1, 4096);
BENCHMARK(AddAndRemove)->RangeMultiplier(16)->Range(1, 65536);

} // namespace

BENCHMARK_MAIN();
