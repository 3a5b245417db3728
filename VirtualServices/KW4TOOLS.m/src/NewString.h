#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

// A copy of the text with a NUL behind it, in storage from malloc for `iRoom` (at least the length
// of the text) characters and the NUL; null when there is no memory.
inline char* NewString(std::string_view iText, std::size_t iRoom)
{
    char* copy = static_cast<char*>(std::malloc(iRoom + 1));
    if (!copy)
        return nullptr;
    std::memcpy(copy, iText.data(), iText.size());
    copy[iText.size()] = '\0';
    return copy;
}
