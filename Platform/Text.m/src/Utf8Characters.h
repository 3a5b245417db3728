#pragma once

#include <cstddef>
#include <string_view>

// The characters of text that is meant to be UTF-8: a well-formed sequence of the Unicode standard
// (table 3-7) is one character, and so is each byte that is part of none.
//
// Decoding starts afresh at each boundary between characters, so a piece between two boundaries
// decodes as it does in its text.

// The bytes of the first character, 1 to 4. REQUIRES: the text is not empty.
std::size_t Utf8FirstLength(std::string_view iText) noexcept;

// The number of characters.
std::size_t Utf8Count(std::string_view iText) noexcept;

// The byte offset of the 0-based character `iPosition`; the size of the text when there are no more
// than `iPosition` characters.
std::size_t Utf8Offset(std::string_view iText, std::size_t iPosition) noexcept;

// Whether a character begins at the byte offset, or the text ends there. Constant time.
bool Utf8IsBoundary(std::string_view iText, std::size_t iOffset) noexcept;

// Whether text that begins with these bytes may complete a character begun before it.
bool Utf8MayContinue(std::string_view iText) noexcept;
