#include "ZORConfigServices.h"

#include "Identifier.h"
#include "IdentifierLists.h"
#include "IntervalRelation.h"
#include "ZORPSNTrace.h"

// The fast forms compare identifiers where they stand in the lists. A trace of the calls therefore
// shows one scope for each call of these functions, and none for a comparison inside them.

namespace
{

// A long bound of an interval, or kNoBound.
std::int32_t BoundAt(const _SEQUENCE_CORBAAny& iInterval, int iIndex)
{
    int bound = kNoBound;
    if (iIndex < iInterval.length())
        iInterval[iIndex] >> bound;
    return bound;
}

// Copies of the elements at these positions, in a list that has the room for them already.
void CopyElements(const _SEQUENCE_CORBAAny& iList, const std::vector<int>& iPositions,
                  _SEQUENCE_CORBAAny& oList)
{
    CORBAAny* next = oList.buffer();
    for (const int position : iPositions)
        *next++ = iList.buffer()[position];
    oList.length(static_cast<long>(iPositions.size()));
}

} // namespace

int SequenceIsEqual(_SEQUENCE_octet iFirst, _SEQUENCE_octet iSecond)
{
    ZORPSNTrace trace("ZORConfigServices SequenceIsEqual", 42, nullptr);
    if (iFirst.length() != iSecond.length())
        return 0;
    return std::equal(iFirst.buffer(), iFirst.buffer() + std::max(iFirst.length(), 0),
                      iSecond.buffer());
}

int AlreadyExist(_SEQUENCE_CORBAAny& iList, CORBAAny& iValue)
{
    ZORPSNTrace trace("ZORConfigServices AlreadyExist", 42, nullptr);
    const Identifier key = IdentifierIn(iValue);
    for (int i = 0; i < iList.length(); ++i)
        if (IdentifierIn(iList[i]) == key)
            return 1;
    return 0;
}

void RemoveDuplicate(_SEQUENCE_CORBAAny& ioList)
{
    ZORPSNTrace trace("ZORConfigServices RemoveDuplicate", 42, nullptr);
    const std::vector<int> positions = LastOccurrences(ioList);
    const int count = static_cast<int>(positions.size());
    if (count == ioList.maximum())
        return;
    _SEQUENCE_CORBAAny kept;
    kept.maximum(count);
    CORBAAny* next = kept.buffer();
    for (const int position : positions)
        *next++ = std::move(ioList.buffer()[position]);
    kept.length(count);
    ioList = std::move(kept);
}

_SEQUENCE_CORBAAny SequenceCrbAnyIntersection(_SEQUENCE_CORBAAny& iFirst,
                                              _SEQUENCE_CORBAAny& iSecond)
{
    ZORPSNTrace trace("ZORConfigServices SequenceCrbAnyIntersection", 42, nullptr);
    const std::vector<int> positions = CommonElements(iFirst, iSecond);
    _SEQUENCE_CORBAAny common;
    common.maximum(static_cast<long>(iFirst.maximum()) + iSecond.maximum());
    CopyElements(iFirst, positions, common);
    return common;
}

_SEQUENCE_CORBAAny SequenceCrbAnySubstraction(_SEQUENCE_CORBAAny& iFirst,
                                              _SEQUENCE_CORBAAny& iSecond)
{
    ZORPSNTrace trace("ZORConfigServices SequenceCrbAnySubstraction", 42, nullptr);
    const std::vector<int> positions = FurtherElements(iFirst, iSecond);
    _SEQUENCE_CORBAAny further;
    further.maximum(static_cast<long>(positions.size()));
    CopyElements(iFirst, positions, further);
    return further;
}

int SequenceInterval(_SEQUENCE_CORBAAny& iFirst, _SEQUENCE_CORBAAny& iSecond,
                     _SEQUENCE_CORBAAny& oResult, int iStep)
{
    ZORPSNTrace trace("ZORConfigServices SequenceInterval", 42, nullptr);
    const IntervalRelation relation = RelateIntervals(
        {BoundAt(iFirst, 0), BoundAt(iFirst, 1), BoundAt(iSecond, 0), BoundAt(iSecond, 1)}, iStep);
    if (relation.count == IntervalRelation::kUntouched)
        return relation.code;
    oResult.maximum(relation.count);
    oResult.length(relation.count);
    for (int i = 0; i < relation.count; ++i)
        oResult[i] << relation.values[static_cast<std::size_t>(i)];
    return relation.code;
}
