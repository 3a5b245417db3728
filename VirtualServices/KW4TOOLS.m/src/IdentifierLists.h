#pragma once

#include "_SEQUENCE_CORBAAny.h"

#include <vector>

// Which elements of a list of identifiers an operation keeps: their positions, in order.
//
// What is kept is defined by a plain algorithm, which compares each element of one list with each
// of another: one receiver X takes the elements of the first list in turn, one receiver Y those of
// the second, for each X again; both are made once, and an element that holds no identifier leaves
// its receiver as it was. These functions keep what that algorithm keeps, in linear time. Where the
// second list, or its part that is searched, begins with elements that hold none, it matters what
// the search before has left in Y; each source comment says how that is known without the search.

// Those without an equal one behind them; the last one always.
std::vector<int> LastOccurrences(const _SEQUENCE_CORBAAny& iList);

// Those of the first list that are found in the second; a search ends where it finds.
std::vector<int> CommonElements(const _SEQUENCE_CORBAAny& iFirst,
                                const _SEQUENCE_CORBAAny& iSecond);

// Those of the first list that are not found in the second; a search always goes to the end.
std::vector<int> FurtherElements(const _SEQUENCE_CORBAAny& iFirst,
                                 const _SEQUENCE_CORBAAny& iSecond);
