#include "ZORDuxStringManagement.h"

#include "ZORDuxStrings.h"

#include <string>

namespace
{
const char* TextOf(const ZORUnicodeString* iText)
{
    return iText ? iText->ConvertToChar() : nullptr;
}

// Lets the function change a copy of the text, which then takes the text's place.
ZORUnicodeString* Change(ZORUnicodeString* ioText, char* (*iFunction)(char*))
{
    if (!ioText)
        return nullptr;
    std::string bytes = ioText->ConvertToChar();
    *ioText = iFunction(bytes.data());
    return ioText;
}
} // namespace

int ZORDuxStringManagement::Pos(const ZORUnicodeString* iNeedle, const ZORUnicodeString* iText,
                                int iStart)
{
    return pos(TextOf(iNeedle), TextOf(iText), static_cast<unsigned>(iStart));
}

int ZORDuxStringManagement::WordLen(const ZORUnicodeString* iText, int iNumber)
{
    return wordlen(TextOf(iText), iNumber);
}

int ZORDuxStringManagement::WordPos(const ZORUnicodeString* iPhrase, const ZORUnicodeString* iText,
                                    int iStart)
{
    return wordpos(TextOf(iPhrase), TextOf(iText), static_cast<unsigned>(iStart));
}

char* ZORDuxStringManagement::Word(const ZORUnicodeString* iText, int iNumber)
{
    return word(TextOf(iText), static_cast<unsigned>(iNumber));
}

char* ZORDuxStringManagement::SubWord(const ZORUnicodeString* iText, int iFirst, int iCount)
{
    return subword(TextOf(iText), static_cast<unsigned>(iFirst), static_cast<unsigned>(iCount));
}

char* ZORDuxStringManagement::SubStr(const ZORUnicodeString* iText, int iStart, int iCount)
{
    return substr(TextOf(iText), static_cast<unsigned>(iStart), static_cast<unsigned>(iCount));
}

const char* ZORDuxStringManagement::Right(ZORUnicodeString* iText, int iCount)
{
    return right(TextOf(iText), static_cast<unsigned>(iCount));
}

ZORUnicodeString* ZORDuxStringManagement::Upper(ZORUnicodeString* ioText)
{
    return Change(ioText, upper);
}

ZORUnicodeString* ZORDuxStringManagement::QStrip(ZORUnicodeString* ioText)
{
    return Change(ioText, qstrip);
}

// Callers are compiled for values.
// NOLINTBEGIN(performance-unnecessary-value-param)
char* ZORDuxStringManagement::Strip(const ZORUnicodeString* iText, ZORUnicodeString iMode,
                                    ZORUnicodeString iCharacter)
{
    return strip(TextOf(iText), iMode.ConvertToChar(), iCharacter.ConvertToChar());
}
// NOLINTEND(performance-unnecessary-value-param)
