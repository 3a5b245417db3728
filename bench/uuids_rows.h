#pragma once

#include "support/Rows.h"

#include <cstring>

inline constexpr int kUuidRoom = 37;

// Whether a text has the form of a version 4 identifier, in small letters.
inline bool IsUuid(const char* iText)
{
    constexpr char kForm[] = "xxxxxxxx-xxxx-4xxx-vxxx-xxxxxxxxxxxx";
    constexpr char kDigits[] = "0123456789abcdef";
    for (const char* form = kForm; *form; ++form, ++iText) {
        const char* const allowed = *form == 'x' ? kDigits : *form == 'v' ? "89ab" : nullptr;
        if (!*iText || (allowed ? !std::strchr(allowed, *iText) : *iText != *form))
            return false;
    }
    return *iText == '\0';
}

// `iWrite` writes a fresh identifier and a NUL.
template <class Write>
void UuidRow(const std::string& iWho, Write iWrite)
{
    Row("text", iWho, [=](benchmark::State& ioState) {
        char text[kUuidRoom] = "";
        char other[kUuidRoom] = "";
        for (auto _ : ioState) {
            iWrite(text);
            benchmark::DoNotOptimize(text);
        }
        iWrite(other);
        Check(ioState, IsUuid(text) && IsUuid(other) && std::strcmp(text, other) != 0);
    });
}
