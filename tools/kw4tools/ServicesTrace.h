#pragma once

#include "ZORPSNTrace.h"

#include <algorithm>

// The level of every scope of the services.
inline constexpr int kServicesTraceLevel = 42;

// Turns the method trace of the services on; a higher level stays.
inline void TurnServicesTraceOn()
{
    ZORPSNTrace::SetActiveLevel(std::max(kServicesTraceLevel, ZORPSNTrace::GetActiveLevel()));
}
