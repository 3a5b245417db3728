#include "ZORDuxStrings.h"

#include <cstring>

unsigned cswap(char iFrom, char iTo, char* ioText, unsigned iStart)
{
    if (!ioText || iStart == 0)
        return 0;
    const std::size_t length = std::strlen(ioText);
    if (iStart > length)
        return 0;

    // The end is fixed beforehand: `iTo` may be NUL, and `iFrom` is then not found in the
    // terminator.
    char* const end = ioText + length;
    const auto next = [&](char* iBegin) {
        return static_cast<char*>(
            std::memchr(iBegin, iFrom, static_cast<std::size_t>(end - iBegin)));
    };
    unsigned count = 0;
    for (char* at = next(ioText + (iStart - 1)); at; at = next(at + 1)) {
        *at = iTo;
        ++count;
    }
    return count;
}
