#pragma once

#include "ZORPSNTrace.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// Turns the method trace on and collects its lines, without their ends, until the end of the scope.
class TraceLines
{
public:
    explicit TraceLines(int iLevel = 42)
    {
        ZORPSNTrace::SetSink(&TraceLines::Take, this);
        ZORPSNTrace::SetActiveLevel(iLevel);
    }
    ~TraceLines()
    {
        ZORPSNTrace::SetActiveLevel(ZORPSNTrace::kOff);
        ZORPSNTrace::SetCallLines(false);
        ZORPSNTrace::SetSink(nullptr, nullptr);
    }
    TraceLines(const TraceLines&) = delete;
    TraceLines& operator=(const TraceLines&) = delete;

    // Runs for each line as it comes; it may raise.
    std::function<void(const std::string&)> onLine;

    // The lines so far; the next call gives those that came after.
    std::vector<std::string> Taken() { return std::exchange(_Lines, {}); }

private:
    static void Take(const char* iLine, std::size_t iLength, void* iSelf)
    {
        auto& self = *static_cast<TraceLines*>(iSelf);
        self._Lines.emplace_back(iLine, iLength - 1);
        if (self.onLine)
            self.onLine(self._Lines.back());
    }

    std::vector<std::string> _Lines;
};
