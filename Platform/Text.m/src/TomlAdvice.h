#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// What is wrong with a text that is no TOML, in words for those who wrote it: mistakes that many
// make in words of our own, all others as the TOML library complains of them. The library looked at
// character iColumn of line iLine of iText, both from 1.
std::string TomlAdvice(std::string_view iComplaint, std::string_view iText, std::size_t iLine,
                       std::size_t iColumn);
