#pragma once

#include <string>

// Arguments for every function of ZORDuxStrings.h, each of which takes those it needs. The texts
// hold no NUL.
struct StringArguments {
    std::string text;
    std::string other;     // what is searched, inserted or written over
    std::string mode;      // of strip
    std::string character; // of strip
    unsigned first = 0;    // a position, length or number
    unsigned second = 0;
    unsigned width = 0; // of pad
    char separator = ' ';
    char from = 0;
    char to = 0;
    // Where the texts lie: against the end or the beginning of what may be touched, or in blocks of
    // exactly their size.
    enum Place { AtEnd, AtBegin, InBlock } place = AtEnd;
};

// Calls every function with the arguments and compares it with the model. Empty when all agree,
// else the calls that differ with both results, and the arguments. Leaves the separator a blank.
std::string CompareWithModel(const StringArguments& iArguments);
