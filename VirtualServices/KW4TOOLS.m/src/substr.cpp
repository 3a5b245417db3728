#include "ZORDuxStrings.h"

#include "NewString.h"

char* substr(const char* iText, unsigned iStart, unsigned iCount)
{
    if (!iText || iStart == 0 || iCount == 0)
        return nullptr;
    const std::size_t length = std::strlen(iText);
    const std::size_t skipped = iStart - 1;
    // Not a sum: that of two large unsigned numbers would wrap around and pass.
    if (skipped >= length || iCount > length - skipped)
        return nullptr;
    return NewString({iText + skipped, iCount}, length);
}
