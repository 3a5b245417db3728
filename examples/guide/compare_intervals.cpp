// Compares effectivity intervals: how they lie to each other, and what only one of them covers.

#include "ZORConfigServices.h"

#include <initializer_list>
#include <iostream>

namespace
{

// From a start to an end, or open with a start alone.
_SEQUENCE_CORBAAny Interval(std::initializer_list<int> iBounds)
{
    _SEQUENCE_CORBAAny interval;
    interval.maximum(static_cast<long>(iBounds.size()));
    interval.length(static_cast<long>(iBounds.size()));
    int at = 0;
    for (const int bound : iBounds)
        interval[at++] << bound;
    return interval;
}

void Compare(_SEQUENCE_CORBAAny iFirst, _SEQUENCE_CORBAAny iSecond)
{
    _SEQUENCE_CORBAAny pieces;
    std::cout << "code " << SequenceInterval(iFirst, iSecond, pieces, 1) << ':';
    for (int i = 0; i < pieces.length(); ++i) {
        int bound = 0;
        pieces[i] >> bound;
        std::cout << ' ' << bound;
    }
    std::cout << '\n';
}

} // namespace

int main()
{
    Compare(Interval({1, 10}), Interval({3, 5})); // 1 to 2 and 6 to 10 are the first's alone
    Compare(Interval({1, 5}), Interval({8}));     // they do not meet
    Compare(Interval({1, 5}), Interval({1}));     // the second is open: from 6 on it is alone
}
