#include "traput.h"

#include "TraceChannels.h"

#include <cstdio>
#include <cstring>
#include <string_view>

namespace
{

constexpr std::size_t kMostFlags = 5;
constexpr std::size_t kMostDigits = 3; // of width and of precision

// Steps over characters of a set, if there are no more of them than `iMost`.
bool Skip(const char*& ioAt, const char* iSet, std::size_t iMost)
{
    const std::size_t count = std::strspn(ioAt, iSet);
    ioAt += count;
    return count <= iMost;
}

// Whether the text is flags, width, precision and conversion, as a printf conversion has them.
bool IsConversion(const char* iText)
{
    constexpr char kDigits[] = "0123456789";
    const char* at = iText;
    if (!Skip(at, "-+ #0", kMostFlags) || !Skip(at, kDigits, kMostDigits))
        return false;
    if (*at == '.' && !Skip(++at, kDigits, kMostDigits))
        return false;
    return *at && std::strchr("diouxX", *at) && !at[1];
}

} // namespace

void traput(int iTrace, [[maybe_unused]] int iLevel, const char* iText)
{
    if (iText)
        TraceChannels::Instance().Put(iTrace, iText);
}

void _traputl(int iTrace, [[maybe_unused]] int iLevel, const char* iFormat, const long* iValue,
              [[maybe_unused]] int iNone)
{
    if (!iValue)
        return;
    const std::string_view middle = iFormat && IsConversion(iFormat) ? iFormat : "d";
    char format[kMostFlags + 2 * kMostDigits + sizeof "%.lx"];
    std::snprintf(format, sizeof format, "%%%.*sl%c", static_cast<int>(middle.size()) - 1,
                  middle.data(), middle.back());
    char digits[1024];
    const int length = std::snprintf(digits, sizeof digits, format, *iValue);
    TraceChannels::Instance().Put(iTrace, {digits, static_cast<std::size_t>(length)});
}
