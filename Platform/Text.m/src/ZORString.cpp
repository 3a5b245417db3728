#include "ZORString.h"

#include "ZORUnicodeString.h"

#include <cstring>

ZOR_IMPLEMENT_CLASS(ZORString, ZORKindImplementation, ZORBaseUnknown)

ZORString::ZORString() = default;

ZORString::ZORString(const char* iText) : _Text(iText ? iText : "") {}

ZORString::ZORString(const ZORUnicodeString& iText)
    : _Text(iText.ConvertToChar(), iText.GetLengthInBytes())
{
}

ZORString::ZORString(const ZORString& iOther) = default;

ZORString::~ZORString() = default;

ZORString& ZORString::operator=(const ZORString& iOther) = default;

ZORString& ZORString::operator=(const char* iText)
{
    _Text = iText ? iText : "";
    return *this;
}

ZORString& ZORString::operator=(const ZORUnicodeString& iText)
{
    _Text.assign(iText.ConvertToChar(), iText.GetLengthInBytes());
    return *this;
}

ZORString& ZORString::Append(const char* iText)
{
    if (iText)
        _Text.append(iText);
    return *this;
}

ZORString& ZORString::Append(const char* iBytes, std::size_t iSize)
{
    if (iBytes)
        _Text.append(iBytes, strnlen(iBytes, iSize));
    return *this;
}
