// Sending an event to the callbacks registered for it, among a hundred events by name; and
// registering callbacks and taking them back.
#include "events_rows.h"
#include "support/Rows.h"

#include "ZORCallbackManager.h"

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

void Dispatch(benchmark::State& ioState, int iSubscribers)
{
    long calls = 0;
    ZORCallbackManager manager;
    ForEachCallback(iSubscribers, [&](const std::string& iEvent) {
        manager.AddCallback(iEvent.c_str(), Count, &calls);
    });
    for (auto _ : ioState)
        manager.DispatchCallbacks(kEvent, nullptr, nullptr);
    Check(ioState, calls == ioState.iterations() * iSubscribers);
}

// Survives no change during a dispatch, and no error.
void DispatchByHand(benchmark::State& ioState, int iSubscribers)
{
    struct Callback {
        ZORCallbackFunction function;
        void* data;
    };
    long calls = 0;
    std::unordered_map<std::string, std::vector<Callback>> events;
    ForEachCallback(iSubscribers, [&](const std::string& iEvent) {
        events[iEvent].push_back({Count, &calls});
    });
    for (auto _ : ioState) {
        const char* const event = kEvent;
        const auto found = events.find(event);
        if (found != events.end())
            for (const Callback& callback : found->second)
                callback.function(nullptr, event, nullptr, callback.data);
    }
    Check(ioState, calls == ioState.iterations() * iSubscribers);
}

// Registers that many callbacks and removes them by handle, in another order.
void AddAndRemove(benchmark::State& ioState, int iCallbacks)
{
    long calls = 0;
    int left = 0;
    std::vector<ZORCallback> callbacks(static_cast<std::size_t>(iCallbacks));
    std::vector<std::size_t> order(callbacks.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    for (auto _ : ioState) {
        ZORCallbackManager manager;
        for (ZORCallback& callback : callbacks)
            callback = manager.AddCallback(kEvent, Count, &calls);
        for (const std::size_t i : order)
            manager.RemoveCallback(callbacks[i]);
        left += manager.GetNbCallbacks(kEvent);
    }
    Check(ioState, left == 0);
}

const Rows kRows([] {
    for (const int subscribers : kSubscribers) {
        DispatchRow(subscribers, "ours", Dispatch);
        DispatchRow(subscribers, "reference", DispatchByHand);
    }
    for (const int callbacks : {10, 1000, 100'000})
        Row("change", callbacks, "ours",
            [=](benchmark::State& ioState) { AddAndRemove(ioState, callbacks); });
});

} // namespace
