#pragma once

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// What a fuzz target reads from its bytes, front to back. Behind their end all numbers are 0 and
// all texts empty.
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* iBytes, std::size_t iSize)
        : _Rest(reinterpret_cast<const char*>(iBytes), iSize)
    {
    }

    bool IsEmpty() const { return _Rest.empty(); }

    char Character()
    {
        if (_Rest.empty())
            return '\0';
        const char first = _Rest.front();
        _Rest.remove_prefix(1);
        return first;
    }
    unsigned Byte() { return static_cast<unsigned char>(Character()); }
    // Of two bytes; the last 536 stand for the largest numbers there are.
    unsigned Number()
    {
        const unsigned low = Byte();
        const unsigned number = Byte() << 8 | low;
        return number < 65000 ? number : 0xffff0000 | number;
    }
    // Of one byte: small ones of both signs and, at its ends, the smallest and the largest.
    int Integer()
    {
        constexpr int kExtremes = 8;
        const int byte = static_cast<int>(Byte());
        if (byte < kExtremes)
            return INT_MIN + byte;
        return byte > 255 - kExtremes ? INT_MAX - (255 - byte) : byte - 128;
    }
    // The bytes up to the next NUL, which goes, too.
    std::string Text()
    {
        const std::size_t size = std::min(_Rest.find('\0'), _Rest.size());
        const std::string text(_Rest.substr(0, size));
        _Rest.remove_prefix(std::min(size + 1, _Rest.size()));
        return text;
    }
    // All that is left.
    std::string_view Rest() const { return _Rest; }

private:
    std::string_view _Rest;
};

// Ends the run, which a fuzzer takes for a finding, unless it is true.
inline void Require(bool iTrue, int iLine = __builtin_LINE())
{
    if (iTrue)
        return;
    std::fprintf(stderr, "line %d of the fuzz target does not hold\n", iLine);
    std::abort();
}
inline void RequireEqual(const std::string& iIs, const std::string& iShould,
                         int iLine = __builtin_LINE())
{
    if (iIs != iShould)
        std::fprintf(stderr, "It is\n%s\nand should be\n%s\n", iIs.c_str(), iShould.c_str());
    Require(iIs == iShould, iLine);
}
