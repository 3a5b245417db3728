// A fresh identifier as text.
#include "uuids_rows.h"

#include "ZORUuid.h"

#include <cstdint>
#include <sys/random.h>

namespace
{

char* WriteHexadecimal(char* oText, const std::uint8_t* iOctets, int iCount)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    for (int i = 0; i < iCount; ++i) {
        *oText++ = kDigits[iOctets[i] >> 4];
        *oText++ = kDigits[iOctets[i] & 15];
    }
    return oText;
}

void WriteByHand(char* oText)
{
    std::uint8_t octets[16];
    if (getrandom(octets, sizeof octets, 0) != sizeof octets)
        return;
    octets[6] = static_cast<std::uint8_t>((octets[6] & 0x0f) | 0x40);
    octets[8] = static_cast<std::uint8_t>((octets[8] & 0x3f) | 0x80);
    const std::uint8_t* from = octets;
    for (const int count : {4, 2, 2, 2, 6}) {
        if (from != octets)
            *oText++ = '-';
        oText = WriteHexadecimal(oText, from, count);
        from += count;
    }
    *oText = '\0';
}

const Rows kRows([] {
    UuidRow("ours", [](char* oText) { ZORUuid().UUID_to_chaine(oText); });
    UuidRow("reference", WriteByHand);
});

} // namespace
