#pragma once

#include "ZORConfigServices.h"

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

// A second opinion on SequenceInterval, written without a table.
namespace plain
{

inline int Wrapped(std::int64_t iValue)
{
    return static_cast<int>(static_cast<std::uint32_t>(iValue & 0xffffffff));
}

inline std::string Told(int iCode, const std::vector<std::int64_t>& iValues)
{
    std::string told = std::to_string(iCode) + ':';
    for (const std::int64_t value : iValues)
        told += ' ' + std::to_string(Wrapped(value));
    return told;
}

inline std::string RestsOf(int iCode, const std::vector<std::int64_t>& iLower,
                           const std::vector<std::int64_t>& iUpper)
{
    std::vector<std::int64_t> values = iLower;
    values.insert(values.end(), iUpper.begin(), iUpper.end());
    return values.empty() ? std::to_string(iCode) + ": untouched" : Told(iCode, values);
}

inline std::string BothBounded(std::int64_t a0, std::int64_t a1, std::int64_t b0, std::int64_t b1,
                               std::int64_t s)
{
    if (a1 < b0 || b1 < a0)
        return Told(0, {});
    if (a0 == b0 && a1 == b1)
        return Told(1, {});
    if (a0 <= b0 && b1 <= a1) {
        const bool lower = a0 != b0 && Wrapped(b0 - s) != -1;
        const bool upper = a1 != b1 && Wrapped(b1 + s) != -1;
        return RestsOf(2, lower ? std::vector{a0, b0 - s} : std::vector<std::int64_t>(),
                       upper ? std::vector{b1 + s, a1} : std::vector<std::int64_t>());
    }
    if (a0 < b0 && a1 < b1)
        return Told(3, {a1 + s, b1, a0, b0 - s});
    if (b0 < a0 && b1 < a1)
        return Told(4, {b0, a0 - s, b1 + s, a0});
    const bool lower = a0 != b0 && Wrapped(a0 - s) != -1;
    const bool upper = a1 != b1 && Wrapped(a1 + s) != -1;
    return RestsOf(5, lower ? std::vector{b0, a0 - s} : std::vector<std::int64_t>(),
                   upper ? std::vector{a1 + s, b1} : std::vector<std::int64_t>());
}

// The code, a colon and the values, or "untouched". An open end is -1.
inline std::string Interval(std::int64_t a0, std::int64_t a1, std::int64_t b0, std::int64_t b1,
                            std::int64_t s)
{
    if (a1 == -1 && b1 == -1) {
        if (b0 < a0)
            return Told(5, {b0, a0 - s});
        return b0 == a0 ? Told(1, {}) : Told(13, {a0, b0 - s});
    }
    if (a1 == -1) {
        if (a0 > b1)
            return Told(0, {});
        if (a0 == b0)
            return Told(9, {b1 + s, -1});
        if (a0 == b1)
            return Told(10, {b0, a0 - s, b0, a0 - s});
        return b0 < a0 ? Told(12, {b0, a0 - s, b0, a0 - s}) : Told(11, {a0, b0 - s, a0, b0 - s});
    }
    if (b1 == -1) {
        if (b0 > a1)
            return Told(0, {});
        if (b0 < a0)
            return Told(5, {b0, a0 - s, a1 + s});
        if (b0 == a0)
            return Told(5, {a1 + s});
        return b0 < a1 ? Told(6, {a1 + s, a0, b0 - s}) : Told(7, {a1 + s});
    }
    return BothBounded(a0, a1, b0, b1, s);
}

} // namespace plain

// What SequenceInterval makes of pairs of intervals. Every result tells the case by its code and
// its values, so that none is written only now and then.
class IntervalPairs
{
public:
    // An end of kMissing is no element at all.
    static constexpr int kMissing = INT_MIN;
    static int End(int iEnd) { return iEnd == kMissing ? -1 : iEnd; }

    // In the words of plain::Interval.
    std::string Told(int a0, int a1, int b0, int b1, int iStep)
    {
        Fill(_First, a0, a1);
        Fill(_Second, b0, b1);
        _Result.maximum(5);
        _Result.length(5);
        const int code = SequenceInterval(_First, _Second, _Result, iStep);
        std::string told = std::to_string(code) + ':';
        if (_Result.length() == 5)
            return told + " untouched";
        for (int i = 0; i < _Result.length(); ++i) {
            int value = 0;
            told += _Result[i] >> value ? ' ' + std::to_string(value) : " no number";
        }
        return told;
    }

private:
    static void Fill(_SEQUENCE_CORBAAny& oInterval, int iStart, int iEnd)
    {
        oInterval.maximum(2);
        oInterval.length(iEnd == kMissing ? 1 : 2);
        oInterval[0] << iStart;
        if (iEnd != kMissing)
            oInterval[1] << iEnd;
    }

    _SEQUENCE_CORBAAny _First, _Second, _Result;
};
