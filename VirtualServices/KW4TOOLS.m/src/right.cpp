#include "ZORDuxStrings.h"

#include <cstring>

char* right(const char* iText, unsigned iCount)
{
    if (!iText || iCount == 0)
        return nullptr;
    const std::size_t length = std::strlen(iText);
    return iCount > length ? nullptr : const_cast<char*>(iText) + (length - iCount);
}
