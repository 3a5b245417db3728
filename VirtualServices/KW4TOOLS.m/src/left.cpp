#include "ZORDuxStrings.h"

#include "NewString.h"

char* left(const char* iText, unsigned iCount)
{
    if (!iText || iCount == 0)
        return nullptr;
    const std::size_t length = std::strlen(iText);
    return iCount > length ? nullptr : NewString({iText, iCount}, length);
}
