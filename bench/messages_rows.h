#pragma once

#include "support/Rows.h"

#include <string>

// The messages of which one is built, with two parameters, again and again.

inline constexpr int kMessages = 100;
inline constexpr char kTag[] = "CDA_W_0050";
inline constexpr char kPart[] = "plate.model";
inline constexpr char kUser[] = "ann";
inline constexpr char kBuilt[] = "The part plate.model is locked by ann.";

// Calls `iAdd(tag, number)` for each message.
template <class Add>
void ForEachMessage(Add iAdd)
{
    for (int i = 1; i <= kMessages; ++i)
        iAdd("CDA_W_" + std::to_string(10000 + i).substr(1), i);
}

// The text of message `iNumber`, with the places written as given.
inline std::string MessageText(int iNumber, const std::string& iFirst, const std::string& iSecond)
{
    const std::string which = iNumber == 50 ? "" : std::to_string(iNumber) + " ";
    return "The part " + which + iFirst + " is locked by " + iSecond + ".";
}

// `iBuild()` gives the text built of kTag, kPart and kUser: a string, or what has data() and
// size().
template <class Build>
void RunMessage(benchmark::State& ioState, Build iBuild)
{
    bool same = iBuild() == kBuilt;
    for (auto _ : ioState) {
        auto text = iBuild();
        benchmark::DoNotOptimize(text);
    }
    same = same && iBuild() == kBuilt;
    Check(ioState, same);
}
