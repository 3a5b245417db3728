#include "ZORDuxStrings.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

char* insert(const char* iWhat, const char* iInto, unsigned iAfter)
{
    if (!iWhat || !iInto)
        return nullptr;
    const std::size_t length = std::strlen(iInto);
    if (iAfter > length)
        return nullptr;
    const std::size_t added = std::strlen(iWhat);
    char* const result = static_cast<char*>(std::malloc(length + added + 1));
    if (!result)
        return nullptr;
    char* at = std::copy_n(iInto, iAfter, result);
    at = std::copy_n(iWhat, added, at);
    std::copy_n(iInto + iAfter, length - iAfter + 1, at);
    return result;
}
