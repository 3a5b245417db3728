#include "ZORDuxStrings.h"

#include <cstring>
#include <string_view>

char* qstrip(char* ioText)
{
    if (!ioText)
        return nullptr;
    const std::string_view text = ioText;
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        if (!text.empty())
            *ioText = '\0';
        return ioText;
    }
    const auto length = text.find_last_not_of(' ') + 1 - first;
    if (length == text.size())
        return ioText;
    std::memmove(ioText, ioText + first, length);
    ioText[length] = '\0';
    return ioText;
}
