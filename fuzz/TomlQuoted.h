#pragma once

#include <algorithm>
#include <cstdio>
#include <string>

// The text as a quoted string or key of TOML: what is not plain ASCII is escaped, and a byte
// outside ASCII is written as settings files have it.
inline std::string TomlQuoted(const std::string& iText)
{
    std::string quoted = "\"";
    for (const char each : iText) {
        const unsigned byte = static_cast<unsigned char>(each);
        if (each >= ' ' && each <= '~' && each != '"' && each != '\\') {
            quoted += each;
            continue;
        }
        char escaped[16];
        std::snprintf(escaped, sizeof escaped, "\\u%04X", byte);
        quoted.append(byte < 128 ? "" : "\\u0000").append(escaped);
    }
    return quoted + '"';
}

inline bool IsAscii(const std::string& iText)
{
    return std::all_of(iText.begin(), iText.end(),
                       [](char each) { return static_cast<unsigned char>(each) < 128; });
}
