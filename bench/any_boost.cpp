#include "any_rows.h"

#include <boost/any.hpp>
#include <vector>

namespace
{

struct Boost {
    using Any = boost::any;
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
        const auto* const held = boost::any_cast<Value>(&iAny);
        if (held)
            oValue = *held;
        return held != nullptr;
    }
};

const Rows kRows([] { AnyRows<Boost>("boost::any"); });

} // namespace
