#pragma once

#include <string_view>

// The part of the text that strip() keeps in the given mode: 'L' leading, 'B' both, any other
// trailing.
std::string_view StrippedPart(std::string_view iText, char iMode, char iCharacter);
