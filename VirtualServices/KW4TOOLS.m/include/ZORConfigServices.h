#pragma once

#include "ObjInMemory.h"
#include "ZORExport.h"
#include "_SEQUENCE_CORBAAny.h"
#include "_SEQUENCE_octet.h"

// Lists of object identifiers and effectivity intervals, as the configuration code keeps them.
//
//     _SEQUENCE_CORBAAny wanted = …, known = …;
//     RemoveDuplicate(wanted);
//     _SEQUENCE_CORBAAny missing = SequenceCrbAnySubstraction(wanted, known);
//
// An identifier is a _SEQUENCE_octet; a list of identifiers is a _SEQUENCE_CORBAAny whose anys hold
// one each. Two identifiers are the same when they have the same length and the same octets.
//
// An element that holds no identifier is not refused. The functions read a list element by element
// into one receiver, and such an element leaves there what it found: it stands for the identifier
// read before it by the same function call, or for the empty one when none was. Each function says
// what that means for it.
//
// No function raises an error of its own; std::bad_alloc passes. Lists of n identifiers cost O(n)
// time and, but for AlreadyExist, O(n) memory beside the result.
//
// Thread rule: the functions share nothing; two threads may work on different sequences, and read
// the same.

// 1 when both have the same length and equal octets, else 0. Two empty ones are equal. The
// arguments are copies.
ZOR_EXPORT int SequenceIsEqual(_SEQUENCE_octet iFirst, _SEQUENCE_octet iSecond);

// 1 when an element of `iList` is the identifier that `iValue` holds, else 0; 0 for an empty list.
// An element, or a value, that holds none counts as the empty identifier. Neither is changed.
ZOR_EXPORT int AlreadyExist(_SEQUENCE_CORBAAny& iList, CORBAAny& iValue);

// Removes every element that stands again later in the list: of each identifier the last occurrence
// is kept, so [p, q, p, r] becomes [q, p, r]. The last element is always kept. Room and length are
// the number of elements kept. Pointers and references to elements are invalid afterwards.
//
// An element that holds no identifier stands for the one before it while it is looked for in the
// rest of the list; met in the rest of the list, it stands for the element read before it, which,
// right behind the one that is looked for, is the last that the search before this one has read.
ZOR_EXPORT void RemoveDuplicate(_SEQUENCE_CORBAAny& ioList);

// The elements of `iFirst` that occur in `iSecond`, in the order of `iFirst` and as often as they
// stand there. The result's room is the sum of both lists' rooms. Both may be the same list;
// neither is changed.
//
// An element of `iFirst` that holds no identifier stands for the one before it (the empty one at
// the start). One of `iSecond` as well, so it finds nothing that its predecessor does not; at the
// start of `iSecond` it stands for the empty identifier until the first identifier of `iFirst` that
// is not empty has been looked for, and afterwards for one of `iSecond`.
ZOR_EXPORT _SEQUENCE_CORBAAny SequenceCrbAnyIntersection(_SEQUENCE_CORBAAny& iFirst,
                                                         _SEQUENCE_CORBAAny& iSecond);

// The elements of `iFirst` that do not occur in `iSecond`, in the order of `iFirst` and as often as
// they stand there. The result's room is its length. Both may be the same list; neither is changed.
//
// An element that holds no identifier counts as in SequenceCrbAnyIntersection, but that one at the
// start of `iSecond` stands for the empty identifier only while the first element of `iFirst` is
// looked for.
ZOR_EXPORT _SEQUENCE_CORBAAny SequenceCrbAnySubstraction(_SEQUENCE_CORBAAny& iFirst,
                                                         _SEQUENCE_CORBAAny& iSecond);

// Compares two intervals of whole numbers, returns how they lie to each other and writes the pieces
// that are not common to both.
//
// An interval holds its start in element 0 and its end in element 1, each a long; further elements
// are ignored. Without an end (missing, of another kind, or -1) it is open: it runs upwards without
// limit. A start that is missing or of another kind is -1. An end before its start is not detected.
// `iStep` is the distance of neighbouring values: 1 for unit numbers. The arithmetic is that of 32
// bits and wraps.
//
// The pieces are written to `oResult` as longs in pairs of start and end; an odd number of them
// ends with the start of an open piece. It may be one of the intervals: both are read before it is
// written. Its room becomes the larger of the length it had and the number of values.
//
// | code | meaning                                                        | pieces               |
// |------|----------------------------------------------------------------|----------------------|
// |    0 | they do not meet                                               | none                 |
// |    1 | they are identical                                             | none                 |
// |    2 | both bounded, the second inside the first                      | the first's rest     |
// |    3 | both bounded, they overlap, the first starts and ends earlier  | second's, first's (1)|
// |    4 | both bounded, they overlap, the second starts and ends earlier | both rests (2)       |
// |    5 | the first inside the second (4)                                | the second's rest    |
// |    6 | first bounded, second open and starting inside the first       | open, first's (1)    |
// |    7 | first bounded, second open and starting at the first's end     | the second's open one|
// |    9 | first open, second bounded, same start                         | P, -1: open behind it|
// |   10 | first open, second bounded, the first starts at its end        | the second's, twice  |
// |   11 | first open, second bounded, the first starts earlier           | the first's, twice   |
// |   12 | first open, second bounded, the first starts inside it         | the second's, twice  |
// |   13 | both open, the first starts earlier                            | the first's          |
//
// Callers rely on what is not regular in this:
// (1) the piece that lies higher comes first; in code 6 it is given by its start alone, so that the
//     three values read: start of the open piece, start and end of the first's rest.
// (2) the last value is the first's start, where one would expect its end.
// (3) a rest whose computed bound happens to be -1 counts as absent from codes 2 and 5 of bounded
//     intervals; when both do, `oResult` is left as it was.
// (4) with both open and the second starting earlier, too; of a bounded first and an open second
//     with the same start, the one value is the start of the open piece.
ZOR_EXPORT int SequenceInterval(_SEQUENCE_CORBAAny& iFirst, _SEQUENCE_CORBAAny& iSecond,
                                _SEQUENCE_CORBAAny& oResult, int iStep);
