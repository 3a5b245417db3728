#pragma once

#include <cstddef>
#include <string_view>

// The TOML library needs stack for each part of a dotted key, so a key without end must not reach
// it. Files for people have one or two dots in a line, outside their texts and remarks.

// The first line, from 1, that has more than 32 dots outside strings and comments; 0 when there is
// none. What is nested stays below some thousand parts then, as the library bounds the rest.
std::size_t LineOfTooManyDots(std::string_view iText);
