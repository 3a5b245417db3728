#include "ZORDuxStrings.h"

#include "NewString.h"

char* pad(const char* iText, unsigned iCount, char iFill)
{
    if (!iText)
        return nullptr;
    const std::size_t length = std::strlen(iText);
    if (iCount < length)
        return nullptr;
    char* const result = NewString({iText, length}, iCount);
    if (!result)
        return nullptr;
    std::memset(result + length, iFill, iCount - length);
    result[iCount] = '\0';
    return result;
}
