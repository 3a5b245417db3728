// Values in an any: an identifier of 16 octets in and out, a copy of it, a number.
#include "any_rows.h"

#include "CORBAAny.h"
#include "_SEQUENCE_octet.h"

#include <any>
#include <vector>

namespace
{

struct Ours {
    using Any = CORBAAny;
    using Octets = _SEQUENCE_octet;

    static Octets Identifier()
    {
        Octets octets;
        octets.maximum(kIdentifierSize);
        octets.length(kIdentifierSize);
        std::memcpy(octets.buffer(), kIdentifier, kIdentifierSize);
        return octets;
    }
    static bool IsIdentifier(const Octets& iOctets)
    {
        return ::IsIdentifier(iOctets.buffer(), static_cast<std::size_t>(iOctets.length()));
    }
    static void Put(Any& oAny, const Octets& iOctets) { oAny << iOctets; }
    static void Put(Any& oAny, int iNumber) { oAny << iNumber; }
    static bool Get(const Any& iAny, Octets& oOctets) { return iAny >> oOctets; }
    static bool Get(const Any& iAny, int& oNumber) { return iAny >> oNumber; }
};

// The least: a kind, a size, and 40 bytes.
struct ByHand {
    enum Kind { kNone, kNumber, kBytes };
    struct Octets {
        std::size_t size;
        unsigned char bytes[40];
    };
    struct Any {
        Kind kind = kNone;
        union {
            int number;
            Octets octets;
        };
    };

    static Octets Identifier()
    {
        Octets octets{kIdentifierSize, {}};
        std::memcpy(octets.bytes, kIdentifier, kIdentifierSize);
        return octets;
    }
    static bool IsIdentifier(const Octets& iOctets)
    {
        return ::IsIdentifier(iOctets.bytes, iOctets.size);
    }
    static void Put(Any& oAny, const Octets& iOctets)
    {
        oAny.kind = kBytes;
        oAny.octets.size = iOctets.size;
        std::memcpy(oAny.octets.bytes, iOctets.bytes, iOctets.size);
    }
    static void Put(Any& oAny, int iNumber)
    {
        oAny.kind = kNumber;
        oAny.number = iNumber;
    }
    static bool Get(const Any& iAny, Octets& oOctets)
    {
        if (iAny.kind != kBytes)
            return false;
        oOctets.size = iAny.octets.size;
        std::memcpy(oOctets.bytes, iAny.octets.bytes, iAny.octets.size);
        return true;
    }
    static bool Get(const Any& iAny, int& oNumber)
    {
        if (iAny.kind != kNumber)
            return false;
        oNumber = iAny.number;
        return true;
    }
};

struct Standard {
    using Any = std::any;
    using Octets = std::vector<unsigned char>;

    static Octets Identifier() { return {kIdentifier, kIdentifier + kIdentifierSize}; }
    static bool IsIdentifier(const Octets& iOctets)
    {
        return ::IsIdentifier(iOctets.data(), iOctets.size());
    }
    template <class Value>
    static void Put(Any& oAny, const Value& iValue)
    {
        oAny = iValue;
    }
    template <class Value>
    static bool Get(const Any& iAny, Value& oValue)
    {
        const auto* const held = std::any_cast<Value>(&iAny);
        if (held)
            oValue = *held;
        return held != nullptr;
    }
};

const Rows kRows([] {
    AnyRows<Ours>("ours");
    AnyRows<ByHand>("reference");
    AnyRows<Standard>("std::any");
});

} // namespace
