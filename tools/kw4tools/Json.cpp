#include "Json.h"

namespace
{

bool IsBetween(unsigned char iByte, unsigned iFirst, unsigned iLast)
{
    return iByte >= iFirst && iByte <= iLast;
}

// The number of bytes of the well-formed UTF-8 character that the text begins with, or 0.
std::size_t CharacterSize(std::string_view iText)
{
    const auto byte = [&](std::size_t i) {
        return static_cast<unsigned char>(i < iText.size() ? iText[i] : 0);
    };
    const auto follow = [&](std::size_t iBegin, std::size_t iEnd) {
        for (std::size_t i = iBegin; i < iEnd; ++i)
            if (!IsBetween(byte(i), 0x80, 0xBF))
                return false;
        return true;
    };
    const unsigned char first = byte(0);
    if (first < 0x80)
        return 1;
    if (IsBetween(first, 0xC2, 0xDF))
        return follow(1, 2) ? 2 : 0;
    // The second byte of some is bounded: no overlong form, no surrogate, nothing above U+10FFFF.
    const unsigned low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    const std::size_t size = IsBetween(first, 0xE0, 0xEF)   ? 3
                             : IsBetween(first, 0xF0, 0xF4) ? 4
                                                            : 0;
    return size > 0 && IsBetween(byte(1), low, high) && follow(2, size) ? size : 0;
}

bool IsUtf8(std::string_view iText)
{
    while (!iText.empty()) {
        const std::size_t size = CharacterSize(iText);
        if (size == 0)
            return false;
        iText.remove_prefix(size);
    }
    return true;
}

std::string Quoted(std::string_view iText)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char each : iText) {
        const auto byte = static_cast<unsigned char>(each);
        if (each == '"' || each == '\\')
            (quoted += '\\') += each;
        else if (each == '\n')
            quoted += "\\n";
        else if (each == '\t')
            quoted += "\\t";
        else if (byte < 0x20)
            ((quoted += "\\u00") += digits[byte >> 4]) += digits[byte & 0xF];
        else
            quoted += each;
    }
    return quoted += '"';
}

std::string Bytes(std::string_view iText)
{
    Json bytes = Json::Array();
    for (const char each : iText)
        bytes.Add(static_cast<unsigned char>(each));
    return bytes.Text();
}

} // namespace

Json::Json(std::string_view iText) : _Text(IsUtf8(iText) ? Quoted(iText) : Bytes(iText)) {}

void Json::Separate()
{
    if (_Text.size() > 1)
        _Text += ',';
}

Json& Json::Add(const Json& iElement)
{
    Separate();
    _Text += iElement.Text();
    return *this;
}

Json& Json::Add(const char* iName, const Json& iMember)
{
    Separate();
    ((_Text += Quoted(iName)) += ':') += iMember.Text();
    return *this;
}
