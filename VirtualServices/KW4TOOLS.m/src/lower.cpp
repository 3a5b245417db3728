#include "ZORDuxStrings.h"

#include <cctype>

char* lower(char* ioText)
{
    if (!ioText)
        return nullptr;
    for (char* at = ioText; *at; ++at)
        *at = static_cast<char>(std::tolower(static_cast<unsigned char>(*at)));
    return ioText;
}
