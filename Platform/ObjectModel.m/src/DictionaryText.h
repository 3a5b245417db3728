#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// What one entry of a dictionary file says.
struct DictionaryEntry {
    std::string className;
    std::string interfaceName;
    std::string library; // as written
    std::string creator;
    std::size_t line; // where the entry begins, from 1
};

struct DictionaryMistake {
    std::size_t line;
    std::string what;
};

// The text of a dictionary file, understood. Entries stand in the order of the file, mistakes too.
struct DictionaryText {
    std::vector<DictionaryEntry> entries;
    std::vector<DictionaryMistake> mistakes;
};

// Reads the text of a dictionary file. An entry with a mistake is left out and the others are
// taken, also when the mistake is one of the notation: reading then goes on at the next table.
DictionaryText ReadDictionaryText(std::string_view iText);
