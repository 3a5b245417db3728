#pragma once

#include <optional>
#include <string>
#include <vector>

// A picture in text of two intervals and of the pieces that are not common to both.
//
//     std::cout << DrawIntervals({1, 10}, {3, 5}, PiecesOf(2, {1, 2, 6, 10}));
//
//             1   2   3       5   6               10
//             +---+---+-------+---+---------------+
//     first   [===================================]           1:10
//     second          [=======]                               3:5
//     piece   [===]                                           1:2
//     piece                       [===============]           6:10
//
// An open interval ends in ">". Where the end lies before the start, "]" and "[" stand at them with
// dots between. A single value, and what one column cannot tell apart, is "|". All is drawn on one
// scale: a fixed number of columns for each unit while that fits, proportional above. The numbers
// over the scale are those for which there is place. No line is longer than 79 columns; the text
// ends with a newline. All functions are pure.

struct DrawnInterval {
    int start;
    std::optional<int> end; // nothing: open

    bool operator==(const DrawnInterval&) const = default;
};

// The pieces that the values of an interval comparison with that code tell, in their order.
std::vector<DrawnInterval> PiecesOf(int iCode, const std::vector<int>& iValues);

std::string DrawIntervals(const DrawnInterval& iFirst, const DrawnInterval& iSecond,
                          const std::vector<DrawnInterval>& iPieces);
