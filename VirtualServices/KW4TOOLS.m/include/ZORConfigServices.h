#pragma once

#include "ObjInMemory.h"
#include "ZORExport.h"
#include "_SEQUENCE_CORBAAny.h"
#include "_SEQUENCE_octet.h"

// Lists of object identifiers and effectivity intervals, as the configuration code keeps them.
//
//     _SEQUENCE_CORBAAny wanted, known;
//     …
//     RemoveDuplicate(wanted);
//     _SEQUENCE_CORBAAny missing = SequenceCrbAnySubstraction(wanted, known);
//
// An identifier is a _SEQUENCE_octet; a list of identifiers is a _SEQUENCE_CORBAAny whose anys hold
// one each. Two identifiers are the same when they have the same length and the same octets.
//
// An element that holds no identifier is not refused. The functions that search one list for the
// elements of another read them into two receivers, one for the element looked for and one for
// those it is compared with, both empty at the start of a call. An element without identifier
// leaves its receiver as it was, and so stands for what was read into it before. Each function says
// where that shows.
//
// No function raises an error of its own. Where memory does not suffice, std::bad_alloc passes and
// all lists are as they were. Lists of n identifiers cost O(n) time and, but for AlreadyExist, O(n)
// memory beside the result; identifiers chosen to collide cost O(n * n) time at worst.
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
// An element without identifier is looked for as the one before it (the empty one at the start).
// Right behind the element that is looked for it stands for the last one that the search before has
// read, else for the one before it: in [p, q, -, r], where - holds none, all are kept, for "-" is r
// while q is looked for.
ZOR_EXPORT void RemoveDuplicate(_SEQUENCE_CORBAAny& ioList);

// The elements of `iFirst` that occur in `iSecond`, in the order of `iFirst` and as often as they
// stand there. The result's room is the sum of both lists' rooms. Both may be the same list;
// neither is changed.
//
// An element without identifier stands for the one before it in its list. At the start of `iFirst`
// it stands for the empty identifier; at the start of `iSecond` as well, until an identifier that
// is not empty has been looked for, and from then on for one of `iSecond`.
ZOR_EXPORT _SEQUENCE_CORBAAny SequenceCrbAnyIntersection(_SEQUENCE_CORBAAny& iFirst,
                                                         _SEQUENCE_CORBAAny& iSecond);

// The elements of `iFirst` that do not occur in `iSecond`, in the order of `iFirst` and as often as
// they stand there. The result's room is its length. Both may be the same list; neither is changed.
//
// An element without identifier counts as in SequenceCrbAnyIntersection, but at the start of
// `iSecond` it stands for the empty identifier only while the first element of `iFirst` is looked
// for.
ZOR_EXPORT _SEQUENCE_CORBAAny SequenceCrbAnySubstraction(_SEQUENCE_CORBAAny& iFirst,
                                                         _SEQUENCE_CORBAAny& iSecond);

// Compares two intervals of whole numbers, returns how they lie to each other and writes the pieces
// that are not common to both.
//
//     _SEQUENCE_CORBAAny first, second, pieces;              // first 1 to 10, second 3 to 5
//     int code = SequenceInterval(first, second, pieces, 1); // 2, and pieces is 1, 2, 6, 10
//
// An interval holds its start in element 0 and its end in element 1, each a long; further elements
// are ignored. Without an end (missing, of another kind, or -1) it is open: it runs upwards without
// limit. A start that is missing or of another kind is -1. An end before its start is not detected.
// `iStep` is the distance of neighbouring values: 1 for unit numbers. The arithmetic is that of 32
// bits and wraps.
//
// The pieces are written to `oResult` as longs, in pairs of start and end; an odd number of them
// ends with the start of an open piece. `oResult` may be one of the intervals: both are read before
// it is written. Its room becomes the larger of the length it had and the number of values.
//
// With the first interval from a to A, the second from b to B, and the step s:
//
// | code | the intervals                                    | values                           |
// |------|--------------------------------------------------|----------------------------------|
// |    0 | do not meet                                      |                                  |
// |    1 | are identical                                    |                                  |
// |    2 | both bounded, the second inside the first        | a, b-s if a < b; B+s, A if B < A |
// |    3 | both bounded, the first starts and ends earlier  | A+s, B, a, b-s                   |
// |    4 | both bounded, the second starts and ends earlier | b, a-s, B+s, a                   |
// |    5 | both bounded, the first inside the second        | b, a-s if b < a; A+s, B if A < B |
// |    5 | the second open, and starts earlier              | b, a-s, A+s                      |
// |    5 | the second open, same start                      | A+s                              |
// |    5 | both open, the second starts earlier             | b, a-s                           |
// |    6 | the second open, and starts inside the first     | A+s, a, b-s                      |
// |    7 | the second open, and starts at the first's end   | A+s                              |
// |    9 | the first open, same start                       | B+s, -1                          |
// |   10 | the first open, and starts at the second's end   | b, a-s, b, a-s                   |
// |   11 | the first open, and starts earlier               | a, b-s, a, b-s                   |
// |   12 | the first open, and starts inside the second     | b, a-s, b, a-s                   |
// |   13 | both open, the first starts earlier              | a, b-s                           |
//
// Callers rely on what is not regular in this: the start a that ends the values of code 4, the
// open piece ahead of the other in code 6, the mark -1 of an open end in code 9 alone, the
// repetition in codes 10 to 12. A computed bound of two bounded intervals in codes 2 and 5 that
// happens to be -1 counts as absent, with its piece; when no piece remains, `oResult` is left as it
// was, room and all.
ZOR_EXPORT int SequenceInterval(_SEQUENCE_CORBAAny& iFirst, _SEQUENCE_CORBAAny& iSecond,
                                _SEQUENCE_CORBAAny& oResult, int iStep);
