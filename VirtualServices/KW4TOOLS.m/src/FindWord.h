#pragma once

#include <cstddef>
#include <cstdint>

// A word inside a text: from `begin` to before `end`.
struct WordRange {
    const char* begin;
    const char* end;
    explicit operator bool() const { return begin != nullptr; }
};

// Word `iNumber` (from 1) of the text, or as many of its first characters as `iLongest` says. When
// the text has fewer words, `begin` is null and `end` is the terminator. Reads the text once and no
// further than it must.
WordRange FindWord(const char* iText, std::size_t iNumber, char iSeparator,
                   std::ptrdiff_t iLongest = PTRDIFF_MAX);
