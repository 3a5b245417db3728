#include "ZORDuxStrings.h"

#include <cstring>

int pos(const char* iNeedle, const char* iHay, unsigned iStart)
{
    if (!iNeedle || !iHay || iStart == 0)
        return -1;
    const std::size_t skipped = iStart - 1;
    if (!*iNeedle || strnlen(iHay, skipped) < skipped)
        return 0;
    const char* const found = std::strstr(iHay + skipped, iNeedle);
    return found ? static_cast<int>(found - iHay + 1) : 0;
}
