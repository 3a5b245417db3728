#pragma once

#include "support/Rows.h"

#include <string>

// A hundred events, each but one with a callback; that one has as many as the row says.

inline constexpr int kSubscribers[] = {0, 1, 10, 1000};
inline constexpr int kEvents = 100;
// Read anew for each dispatch: nothing is known about it beforehand.
inline const char* const volatile kEvent = "PartOpened";

// Calls `iAdd(name)` for each callback.
template <class Add>
void ForEachCallback(int iSubscribers, Add iAdd)
{
    for (int i = 1; i < kEvents; ++i)
        iAdd("PartChanged" + std::to_string(i));
    for (int i = 0; i < iSubscribers; ++i)
        iAdd(kEvent);
}

template <class Dispatch>
void DispatchRow(int iSubscribers, const std::string& iWho, Dispatch iDispatch)
{
    Row("dispatch", iSubscribers, iWho,
        [=](benchmark::State& ioState) { iDispatch(ioState, iSubscribers); });
}
