#pragma once

#include "ZORExport.h"

#include <array>
#include <cstdint>

// A universally unique identifier.
//
//     ZORUuid identifier;
//     char text[ZORUuid::kTextSize];
//     identifier.UUID_to_chaine(text);
//
// Where the system has no random bits to give, the process is aborted.
// Thread rule: any thread may make them; a forked child never repeats its parent's.
class ZOR_EXPORT ZORUuid
{
public:
    // Room for the text form: 36 characters and a NUL.
    static constexpr int kTextSize = 37;

    // A fresh version 4 identifier (RFC 9562, section 5.4).
    ZORUuid();
    // Writes the text form: lower-case hexadecimal in groups of 8-4-4-4-12, ended by a NUL.
    // `oText` has room for kTextSize characters.
    void UUID_to_chaine(char* oText) const;

private:
    std::array<std::uint8_t, 16> _Octets;
};
