#pragma once

#include "events_rows.h"

#include <unordered_map>

// Dispatch by a library whose signals are objects: they stand in a map. `Signal` is a
// signal of void(const char*, void*).
template <class Signal>
void DispatchBySignal(benchmark::State& ioState, int iSubscribers)
{
    long calls = 0;
    std::unordered_map<std::string, Signal> events;
    ForEachCallback(iSubscribers, [&](const std::string& iEvent) {
        events[iEvent].connect([&calls](const char*, void*) { ++calls; });
    });
    for (auto _ : ioState) {
        const char* const event = kEvent;
        const auto found = events.find(event);
        if (found != events.end())
            found->second(event, nullptr);
    }
    Check(ioState, calls == ioState.iterations() * iSubscribers);
}
