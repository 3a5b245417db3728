#pragma once

#include "ZORListValZORUnicodeString.h"

#include <string>
#include <vector>

// The elements of a list, as tests compare them.
inline std::vector<std::string> Texts(const ZORListValZORUnicodeString& iList)
{
    std::vector<std::string> texts;
    for (const ZORUnicodeString& each : iList)
        texts.emplace_back(each.ConvertToChar(), each.GetLengthInBytes());
    return texts;
}
