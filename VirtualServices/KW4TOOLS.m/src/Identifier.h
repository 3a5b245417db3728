#pragma once

#include "CORBAAny.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

// The octets of an identifier, where they are. The empty identifier is the default.
struct Identifier {
    const unsigned char* octets = nullptr;
    std::size_t count = 0;

    // Eight octets of it as a number, or as many as a smaller kOctets says.
    template <std::size_t kOctets = 8>
    std::uint64_t WordAt(std::size_t iAt) const
    {
        std::uint64_t word = 0;
        std::memcpy(&word, octets + iAt, kOctets);
        return word;
    }

    // By words: a call of memcmp costs more than comparing what an identifier usually has.
    bool operator==(const Identifier& iOther) const
    {
        if (count != iOther.count)
            return false;
        if (count < 8)
            return count == 0 || std::memcmp(octets, iOther.octets, count) == 0;
        for (std::size_t at = 0; at < count - 8; at += 8)
            if (WordAt(at) != iOther.WordAt(at))
                return false;
        return WordAt(count - 8) == iOther.WordAt(count - 8);
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
        std::size_t at = 0;
        std::size_t left = iIdentifier.count;
        std::uint64_t hash = kKeys[2] ^ left;
        for (; left > 16; at += 16, left -= 16)
            hash = Fold(iIdentifier.WordAt(at) ^ kKeys[0], iIdentifier.WordAt(at + 8) ^ hash);
        // The last 1 to 16 octets; the two words may overlap.
        std::uint64_t low = 0;
        std::uint64_t high = 0;
        if (left >= 8) {
            low = iIdentifier.WordAt(at);
            high = iIdentifier.WordAt(at + left - 8);
        } else if (left >= 4) {
            low = iIdentifier.WordAt<4>(at);
            high = iIdentifier.WordAt<4>(at + left - 4);
        } else if (left > 0) {
            low = iIdentifier.WordAt<1>(at) | iIdentifier.WordAt<1>(at + left / 2) << 8;
            high = iIdentifier.WordAt<1>(at + left - 1);
        }
        return Fold(Fold(low ^ kKeys[1], high ^ hash) ^ kKeys[0], kKeys[3]);
    }

private:
    // The fractions of the square roots of 2, 3, 5 and 7.
    static constexpr std::uint64_t kKeys[] = {0x6a09e667f3bcc908, 0xbb67ae8584caa73b,
                                              0x3c6ef372fe94f82b, 0xa54ff53a5f1d36f1};

    static std::uint64_t Fold(std::uint64_t iLeft, std::uint64_t iRight)
    {
        __extension__ using Product = unsigned __int128;
        const Product product = static_cast<Product>(iLeft) * iRight;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    }
};
