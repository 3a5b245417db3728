#pragma once

#include <cstddef>
#include <string_view>

// The bytes a text of TOML may be made of: well-formed UTF-8 without control characters other than
// tab and line breaks, which are "\n" or "\r\n".
struct TomlBytes {
    std::size_t illFormed; // where the first byte is that is not UTF-8, or npos
    bool sound;            // UTF-8 and nothing that TOML forbids

    static TomlBytes Look(std::string_view iText);
};
