#pragma once

#include "CORBAAny.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

// The octets of an identifier, where they are. The empty identifier is the default.
struct Identifier {
    const unsigned char* octets = nullptr;
    std::size_t count = 0;

    bool operator==(const Identifier& iOther) const
    {
        return count == iOther.count &&
               (count == 0 || std::memcmp(octets, iOther.octets, count) == 0);
    }
};

inline bool HoldsIdentifier(const CORBAAny& iAny)
{
    return iAny.type() == CORBAAny::kOctets;
}

// The identifier that the any holds; the empty one when it holds none.
inline Identifier IdentifierIn(const CORBAAny& iAny)
{
    int count = 0;
    const unsigned char* const octets = iAny.PeekOctets(count);
    return {octets, static_cast<std::size_t>(count)};
}

// Goes through a list the way one receiver does that is filled from each element in turn: an
// element that holds no identifier leaves it as it was.
class IdentifierReceiver
{
public:
    const Identifier& Read(const CORBAAny& iAny)
    {
        if (HoldsIdentifier(iAny))
            _Held = IdentifierIn(iAny);
        return _Held;
    }

private:
    Identifier _Held;
};

// The same in every process, and spread evenly over all 64 bits: the octets are taken 16 at a time,
// each half keyed, and folded with the upper and lower half of their product. The length takes
// part, so that octets and the same octets with zeros behind them differ.
struct IdentifierHash {
    std::uint64_t operator()(const Identifier& iIdentifier) const
    {
        const unsigned char* at = iIdentifier.octets;
        std::size_t left = iIdentifier.count;
        std::uint64_t hash = kKeys[2] ^ left;
        for (; left > 16; at += 16, left -= 16)
            hash = Fold(Load<8>(at) ^ kKeys[0], Load<8>(at + 8) ^ hash);
        // The last 1 to 16 octets; two loads may overlap.
        std::uint64_t low = 0;
        std::uint64_t high = 0;
        if (left >= 8) {
            low = Load<8>(at);
            high = Load<8>(at + left - 8);
        } else if (left >= 4) {
            low = Load<4>(at);
            high = Load<4>(at + left - 4);
        } else if (left > 0) {
            low = at[0] | static_cast<std::uint64_t>(at[left / 2]) << 8;
            high = at[left - 1];
        }
        return Fold(Fold(low ^ kKeys[1], high ^ hash) ^ kKeys[0], kKeys[3]);
    }

private:
    // The fractions of the square roots of 2, 3, 5 and 7.
    static constexpr std::uint64_t kKeys[] = {0x6a09e667f3bcc908, 0xbb67ae8584caa73b,
                                              0x3c6ef372fe94f82b, 0xa54ff53a5f1d36f1};

    template <std::size_t kOctets>
    static std::uint64_t Load(const unsigned char* iAt)
    {
        std::uint64_t value = 0;
        std::memcpy(&value, iAt, kOctets);
        return value;
    }

    static std::uint64_t Fold(std::uint64_t iLeft, std::uint64_t iRight)
    {
        __extension__ using Product = unsigned __int128;
        const Product product = static_cast<Product>(iLeft) * iRight;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    }
};
