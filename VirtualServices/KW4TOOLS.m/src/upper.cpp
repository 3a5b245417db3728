#include "ZORDuxStrings.h"

#include <cctype>

char* upper(char* ioText)
{
    if (!ioText)
        return nullptr;
    for (char* at = ioText; *at; ++at)
        *at = static_cast<char>(std::toupper(static_cast<unsigned char>(*at)));
    return ioText;
}
