#include "ZORUuid.h"

#include "RandomUuid.h"

ZORUuid::ZORUuid() : _Octets(RandomUuid()) {}

void ZORUuid::UUID_to_chaine(char* oText) const
{
    static constexpr char kDigits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < _Octets.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            *oText++ = '-';
        *oText++ = kDigits[_Octets[i] >> 4];
        *oText++ = kDigits[_Octets[i] & 0x0f];
    }
    *oText = '\0';
}
