#pragma once

#include <array>
#include <cstdint>

// The bounds of two intervals; kNoBound where there is none, which at the end of an interval makes
// it open.
struct IntervalBounds {
    std::int32_t a0, a1; // the first's start and end
    std::int32_t b0, b1; // the second's
};

inline constexpr std::int32_t kNoBound = -1;

// How the intervals lie to each other, and the values that tell the pieces not common to both.
struct IntervalRelation {
    int code = -1;
    int count = 0; // of the values; kUntouched: the caller's result is to stay as it is
    std::array<std::int32_t, 4> values{};

    static constexpr int kUntouched = -1;
};

// The piece that ends before a bound v ends at v - iStep, one that begins behind it begins at
// v + iStep; in 32 bits, wrapping.
IntervalRelation RelateIntervals(const IntervalBounds& iBounds, std::int32_t iStep);
