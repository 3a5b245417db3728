#include "ZORDuxStrings.h"

#include "NewString.h"
#include "StrippedPart.h"

char* strip(const char* iText, const char* iMode, const char* iCharacter)
{
    if (!iText || !iMode || !iCharacter)
        return nullptr;
    const std::string_view text = iText;
    return NewString(StrippedPart(text, *iMode, *iCharacter), text.size());
}
