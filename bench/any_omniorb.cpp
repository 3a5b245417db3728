#include "any_rows.h"

#include <omniORB4/CORBA.h>

namespace
{

struct OmniOrb {
    using Any = CORBA::Any;
    using Octets = CORBA::OctetSeq;

    static Octets Identifier()
    {
        Octets octets;
        octets.length(kIdentifierSize);
        std::memcpy(octets.get_buffer(), kIdentifier, kIdentifierSize);
        return octets;
    }
    static bool IsIdentifier(const Octets& iOctets)
    {
        return ::IsIdentifier(iOctets.get_buffer(), iOctets.length());
    }
    static void Put(Any& oAny, const Octets& iOctets) { oAny <<= iOctets; }
    static void Put(Any& oAny, int iNumber) { oAny <<= static_cast<CORBA::Long>(iNumber); }
    static bool Get(const Any& iAny, Octets& oOctets)
    {
        const Octets* held = nullptr;
        if (!(iAny >>= held))
            return false;
        oOctets = *held;
        return true;
    }
    static bool Get(const Any& iAny, int& oNumber)
    {
        CORBA::Long held = 0;
        if (!(iAny >>= held))
            return false;
        oNumber = held;
        return true;
    }
};

const Rows kRows([] { AnyRows<OmniOrb>("CORBA::Any"); });

} // namespace
