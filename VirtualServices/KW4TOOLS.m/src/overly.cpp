#include "ZORDuxStrings.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

char* overly(const char* iWhat, const char* iTarget, unsigned iAt)
{
    if (!iWhat || !iTarget || iAt == 0)
        return nullptr;
    const std::size_t length = std::strlen(iTarget);
    if (iAt > length)
        return nullptr;
    const std::size_t kept = iAt - 1;
    const std::size_t written = std::strlen(iWhat);
    const std::size_t rest = length - std::min(length, kept + written);
    char* const result = static_cast<char*>(std::malloc(kept + written + rest + 1));
    if (!result)
        return nullptr;
    char* end = std::copy_n(iTarget, kept, result);
    end = std::copy_n(iWhat, written, end);
    end = std::copy_n(iTarget + length - rest, rest, end);
    *end = '\0';
    return result;
}
