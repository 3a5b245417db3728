#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The strings of TOML 1.0: where one ends, what it says, and how to write one.
//
// A text of ours is any bytes without NUL, a string of TOML is well-formed UTF-8. A byte that is
// part of no UTF-8 character therefore has a form of its own, which no text can mean otherwise:
// \u0000 followed by the character whose number is the byte, as in "\u0000\u00FF" for the byte FF.

enum class Quoting : std::uint8_t {
    Bare, // a number, truth value or date
    Basic,
    Literal,
    MultiBasic,
    MultiLiteral,
};

struct TomlStringEnd {
    const char* delimiter; // the closing one; null when the string does not end
    bool plain;            // the bytes up to it are the text, as they stand
};

// Looks for the end of the string whose first byte behind the opening delimiter is `iBegin`.
// REQUIRES: `iQuoting` is not Bare.
TomlStringEnd FindTomlStringEnd(const char* iBegin, const char* iEnd, Quoting iQuoting);

enum class TomlDecoding {
    Done,
    Malformed, // an escape that TOML does not know
    LoneNul,   // a \u0000 that stands for no byte
};

// Appends the text of the string to `oText`. `iBody` is what stands between the delimiters, without
// a line break that directly follows the opening one of a multi-line string.
TomlDecoding DecodeTomlString(std::string_view iBody, Quoting iQuoting, std::string& oText);

// The text as a "basic" string, delimiters included; every text has one.
std::string QuoteBasic(std::string_view iText);

// The text in the manner of the value `iSource`, which is quoted as `iQuoting` says: the same
// delimiters and, in a multi-line string, the same line breaks (`iLineBreak` when it has none) and
// the same beginning, on the line of the delimiter or below it. Falls back to a basic string when
// that manner cannot carry the text.
std::string QuoteLike(std::string_view iSource, Quoting iQuoting, std::string_view iLineBreak,
                      std::string_view iText);

// A key of that name: bare where TOML allows it, else a basic string.
std::string QuoteKey(std::string_view iName);

inline bool IsBareKeyCharacter(char iCharacter)
{
    const char letter = static_cast<char>(iCharacter | 0x20);
    return (letter >= 'a' && letter <= 'z') || (iCharacter >= '0' && iCharacter <= '9') ||
           iCharacter == '_' || iCharacter == '-';
}

// The line break a text begins with: "\n", "\r\n" or nothing.
std::string_view LeadingLineBreak(std::string_view iText);
// The first line break in the text: "\n", "\r\n" or nothing.
std::string_view FirstLineBreak(std::string_view iText);
