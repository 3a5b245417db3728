#include "Utf8Characters.h"

#include <cstdint>
#include <cstring>

namespace
{

constexpr std::size_t kWord = sizeof(std::uint64_t);

unsigned char ByteAt(std::string_view iText, std::size_t iOffset) noexcept
{
    return static_cast<unsigned char>(iText[iOffset]);
}

bool IsContinuation(unsigned char iByte) noexcept
{
    return (iByte & 0xC0) == 0x80;
}

// The length that a first byte announces; 1 for a byte that begins no sequence.
std::size_t AnnouncedLength(unsigned char iLead) noexcept
{
    if (iLead < 0xC2 || iLead > 0xF4)
        return 1;
    return iLead < 0xE0 ? 2 : iLead < 0xF0 ? 3 : 4;
}

// Keeps out longer forms than needed, surrogates and what lies above U+10FFFF.
bool IsSecondByte(unsigned char iLead, unsigned char iByte) noexcept
{
    switch (iLead) {
    case 0xE0:
        return iByte >= 0xA0 && iByte <= 0xBF;
    case 0xED:
        return iByte >= 0x80 && iByte <= 0x9F;
    case 0xF0:
        return iByte >= 0x90 && iByte <= 0xBF;
    case 0xF4:
        return iByte >= 0x80 && iByte <= 0x8F;
    default:
        return IsContinuation(iByte);
    }
}

bool IsAsciiWord(const char* iBytes) noexcept
{
    std::uint64_t word;
    std::memcpy(&word, iBytes, kWord);
    return (word & 0x8080808080808080u) == 0;
}

} // namespace

std::size_t Utf8FirstLength(std::string_view iText) noexcept
{
    const unsigned char lead = ByteAt(iText, 0);
    const std::size_t length = AnnouncedLength(lead);
    if (length == 1 || length > iText.size() || !IsSecondByte(lead, ByteAt(iText, 1)))
        return 1;
    for (std::size_t i = 2; i < length; ++i)
        if (!IsContinuation(ByteAt(iText, i)))
            return 1;
    return length;
}

std::size_t Utf8Count(std::string_view iText) noexcept
{
    std::size_t count = 0;
    while (!iText.empty()) {
        const bool ascii = iText.size() >= kWord && IsAsciiWord(iText.data());
        count += ascii ? kWord : 1;
        iText.remove_prefix(ascii ? kWord : Utf8FirstLength(iText));
    }
    return count;
}

std::size_t Utf8Offset(std::string_view iText, std::size_t iPosition) noexcept
{
    std::string_view rest = iText;
    while (iPosition > 0 && !rest.empty()) {
        const bool ascii = iPosition >= kWord && rest.size() >= kWord && IsAsciiWord(rest.data());
        iPosition -= ascii ? kWord : 1;
        rest.remove_prefix(ascii ? kWord : Utf8FirstLength(rest));
    }
    return iText.size() - rest.size();
}

bool Utf8IsBoundary(std::string_view iText, std::size_t iOffset) noexcept
{
    if (iOffset >= iText.size() || !IsContinuation(ByteAt(iText, iOffset)))
        return true;
    // Only a first byte at most three bytes before can reach this far, and it is a boundary itself.
    for (std::size_t back = 1; back <= 3 && back <= iOffset; ++back)
        if (!IsContinuation(ByteAt(iText, iOffset - back)))
            return Utf8FirstLength(iText.substr(iOffset - back)) <= back;
    return true;
}

bool Utf8MayContinue(std::string_view iText) noexcept
{
    return !iText.empty() && IsContinuation(ByteAt(iText, 0));
}
