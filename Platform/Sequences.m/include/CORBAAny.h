#pragma once

#include "ZORExport.h"

#include <cstdint>
#include <type_traits>

class _SEQUENCE_CORBAAny;
class _SEQUENCE_octet;

// A value of any of a few kinds, or none: a long, a double, a boolean, a string, a sequence of
// octets (an identifier), a sequence of anys.
//
//     CORBAAny bound;
//     bound << 12;
//     long value = 0;
//     if (bound >> value)
//         std::cout << value << '\n';
//
// `<<` stores a copy, whatever was held before; `>>` gives a copy and says whether the any held
// that kind. When it did not, the receiver is left as it was: callers rely on this where they use
// one receiver for many extractions. Copies are independent of each other, sequences of anys with
// all they hold included.
//
// A long is 32 bits wide; it may be stored from and extracted into `long` and `int` alike. Octets
// up to kInlineOctets of them, and strings shorter than that, live inside the any: storing, copying
// and dropping them allocates nothing. Where memory is needed and there is none, std::bad_alloc is
// thrown and the any is as it was.
//
// Thread rule: as for an int. Two threads may use two anys, or read one.
class ZOR_EXPORT CORBAAny
{
public:
    // What an any holds. The numbers are fixed.
    enum Kind : int {
        kEmpty = 0,   // nothing
        kLong = 3,    // a signed number of 32 bits
        kDouble = 7,  // a floating-point number
        kBoolean = 8, // true or false
        kString = 18, // characters up to a NUL
        kOctets = 19, // _SEQUENCE_octet
        kAnys = 20,   // _SEQUENCE_CORBAAny
    };

    // How many octets an any holds without allocating.
    static constexpr int kInlineOctets = 40;

    // Empty.
    CORBAAny() noexcept : _Held() {}
    // A copy of all that is held, and of what that holds.
    CORBAAny(const CORBAAny& iOther)
    {
        if (iOther._Held.owns)
            Clone(iOther);
        else
            _Held = iOther._Held;
    }
    // Leaves the other empty.
    CORBAAny(CORBAAny&& iOther) noexcept : _Held(iOther._Held) { iOther.Become(kEmpty); }
    // Becomes a copy of all that is held there.
    CORBAAny& operator=(const CORBAAny& iOther)
    {
        if (_Held.owns | iOther._Held.owns)
            *this = CORBAAny(iOther);
        else
            _Held = iOther._Held;
        return *this;
    }

    // Leaves the other empty, unless it is this any.
    CORBAAny& operator=(CORBAAny&& iOther) noexcept
    {
        if (this == &iOther)
            return *this;
        Drop();
        _Held = iOther._Held;
        iOther.Become(kEmpty);
        return *this;
    }
    ~CORBAAny() { Drop(); }

    // What is held.
    Kind type() const { return static_cast<Kind>(_Held.kind); }

    // Stores a long.
    void operator<<(int iValue)
    {
        Drop();
        Become(kLong);
        _Held.value.number = iValue;
    }
    // Stores a long. A value beyond 32 bits raises a ZORInternalError and leaves the any as it was.
    void operator<<(long iValue);
    // Stores a double.
    void operator<<(double iValue);
    // Stores a boolean. Only from a bool: a pointer or a number does not turn into one unseen.
    template <class Boolean, class = std::enable_if_t<std::is_same<Boolean, bool>::value>>
    void operator<<(Boolean iValue)
    {
        Drop();
        Become(kBoolean);
        _Held.value.truth = iValue;
    }
    // Stores the characters up to the NUL; null is the empty string. A string of 2 GB or more
    // raises a ZORInternalError and leaves the any as it was.
    void operator<<(const char* iText);
    // Stores the elements in use; of a length beyond the room, as many as there is room for.
    void operator<<(const _SEQUENCE_octet& iOctets);
    void operator<<(const _SEQUENCE_CORBAAny& iAnys);

    // Each: true when the any holds that kind, which is then in the receiver; else false, and the
    // receiver is as it was.
    bool operator>>(int& oValue) const
    {
        if (_Held.kind != kLong)
            return false;
        oValue = _Held.value.number;
        return true;
    }
    bool operator>>(long& oValue) const;
    bool operator>>(double& oValue) const;
    bool operator>>(bool& oValue) const;
    // The text stays the any's: it is valid until the any changes or goes.
    bool operator>>(const char*& oText) const;
    // Sets the receiver's length and its elements; its room grows to just the length where it is
    // smaller, and stays where it is not. The any may be an element of the receiver.
    bool operator>>(_SEQUENCE_octet& oOctets) const;
    bool operator>>(_SEQUENCE_CORBAAny& oAnys) const;

    // The octets held, without a copy: a pointer to `oCount` of them, valid until the any changes
    // or goes, and not null even when there are none. Null, and 0 in `oCount`, for any other kind.
    const unsigned char* PeekOctets(int& oCount) const
    {
        if (_Held.kind != kOctets) {
            oCount = 0;
            return nullptr;
        }
        oCount = _Held.size;
        return _Held.owns ? _Held.value.block : _Held.value.octets;
    }

private:
    union Value {
        std::int32_t number;
        double real;
        bool truth;
        unsigned char octets[kInlineOctets]; // octets, or characters and NUL
        unsigned char* block;                // the same, when they do not fit
        CORBAAny* anys;
    };
    struct Held {
        unsigned char kind;
        bool owns;            // whether `block` or `anys` is in use and has to be freed
        std::uint16_t unused; // 0, so that kind to size are written as one word
        std::int32_t size;    // of the octets, of the characters without the NUL, of the anys
        Value value;
    };

    void Become(Kind iKind)
    {
        _Held.kind = static_cast<unsigned char>(iKind);
        _Held.owns = false;
        _Held.unused = 0;
        _Held.size = 0;
    }
    void Drop() noexcept
    {
        if (_Held.owns)
            Free();
    }
    ZOR_HIDDEN void StoreBytes(Kind iKind, const void* iBytes, int iSize, int iRoom);
    ZOR_HIDDEN void StoreAnys(const CORBAAny* iAnys, int iCount);
    void Clone(const CORBAAny& iOther);
    void Free() noexcept;

    Held _Held;
};
