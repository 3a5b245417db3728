#pragma once

#include "ZORUnicodeString.h"

#include <string_view>

// The bytes of a text, in place: for as long as it is there, unchanged.
inline std::string_view View(const ZORUnicodeString& iText)
{
    return {iText.ConvertToChar(), iText.GetLengthInBytes()};
}
