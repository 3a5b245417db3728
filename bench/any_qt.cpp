#include "any_rows.h"

#include <QByteArray>
#include <QVariant>

namespace
{

struct Qt5 {
    using Any = QVariant;
    using Octets = QByteArray;

    static Octets Identifier()
    {
        return {reinterpret_cast<const char*>(kIdentifier), kIdentifierSize};
    }
    static bool IsIdentifier(const Octets& iOctets)
    {
        return ::IsIdentifier(iOctets.constData(), static_cast<std::size_t>(iOctets.size()));
    }
    template <class Value>
    static void Put(Any& oAny, const Value& iValue)
    {
        oAny = iValue;
    }
    static bool Get(const Any& iAny, Octets& oOctets)
    {
        if (iAny.type() != QVariant::ByteArray)
            return false;
        oOctets = iAny.toByteArray();
        return true;
    }
    static bool Get(const Any& iAny, int& oNumber)
    {
        if (iAny.type() != QVariant::Int)
            return false;
        oNumber = iAny.toInt();
        return true;
    }
};

const Rows kRows([] { AnyRows<Qt5>("QVariant"); });

} // namespace
