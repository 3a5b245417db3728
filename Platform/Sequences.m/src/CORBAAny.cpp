#include "CORBAAny.h"

#include "RaiseWithText.h"
#include "ZORInternalError.h"
#include "_SEQUENCE_CORBAAny.h"
#include "_SEQUENCE_octet.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>

// The two sequence classes get their tables from the library above. This side fills them through
// ZORSequenceOf and never makes one, so that the platform loads without that library.

namespace
{

using OctetSequence = ZORSequenceOf<unsigned char>;
using AnySequence = ZORSequenceOf<CORBAAny>;

void RaiseTooLarge(const std::string& iWhat)
{
    RaiseWithText<ZORInternalError>(iWhat + " does not fit in an any",
                                    "Platform/Sequences.m/src/CORBAAny", __LINE__);
}

// Elements that are in use and for which there is room.
template <class Element>
int CountOf(const ZORSequenceOf<Element>& iSequence)
{
    return std::max(0, std::min(iSequence.length(), iSequence.maximum()));
}

// Makes room for `iCount` elements without keeping those in use.
template <class Element>
void MakeRoom(ZORSequenceOf<Element>& oSequence, int iCount)
{
    if (oSequence.maximum() >= iCount)
        return;
    oSequence.length(0);
    oSequence.maximum(iCount);
}

// Copies octets that may overlap. Those of an identifier are three blocks at most.
void CopyOctets(unsigned char* oTo, const void* iFrom, int iCount)
{
    struct Block {
        unsigned char octets[16];
    };
    constexpr int kSize = sizeof(Block);
    const auto* const from = static_cast<const unsigned char*>(iFrom);
    if (iCount < kSize || iCount > 3 * kSize) {
        if (iCount > 0)
            std::memmove(oTo, from, static_cast<std::size_t>(iCount));
        return;
    }
    const int starts[] = {0, std::min(kSize, iCount - kSize), iCount - kSize};
    Block blocks[std::size(starts)];
    for (std::size_t i = 0; i < std::size(starts); ++i)
        std::memcpy(&blocks[i], from + starts[i], kSize);
    for (std::size_t i = 0; i < std::size(starts); ++i)
        std::memcpy(oTo + starts[i], &blocks[i], kSize);
}

std::unique_ptr<CORBAAny[]> CopyOf(const CORBAAny* iAnys, int iCount)
{
    std::unique_ptr<CORBAAny[]> copies(new CORBAAny[static_cast<std::size_t>(iCount)]);
    std::copy_n(iAnys, iCount, copies.get());
    return copies;
}

} // namespace

void CORBAAny::operator<<(long iValue)
{
    if (iValue < INT_MIN || iValue > INT_MAX)
        return RaiseTooLarge("The number " + std::to_string(iValue));
    *this << static_cast<int>(iValue);
}

void CORBAAny::operator<<(double iValue)
{
    Drop();
    Become(kDouble);
    _Held.value.real = iValue;
}

void CORBAAny::operator<<(const char* iText)
{
    const char* const text = iText ? iText : "";
    const std::size_t size = std::strlen(text);
    if (size >= INT_MAX)
        return RaiseTooLarge("A string of " + std::to_string(size) + " characters");
    StoreBytes(kString, text, static_cast<int>(size), static_cast<int>(size) + 1);
}

void CORBAAny::operator<<(const _SEQUENCE_octet& iOctets)
{
    const OctetSequence& octets = iOctets;
    const int count = CountOf(octets);
    StoreBytes(kOctets, octets.buffer(), count, count);
}

void CORBAAny::operator<<(const _SEQUENCE_CORBAAny& iAnys)
{
    const AnySequence& anys = iAnys;
    StoreAnys(anys.buffer(), CountOf(anys));
}

bool CORBAAny::operator>>(long& oValue) const
{
    int value = 0;
    if (!(*this >> value))
        return false;
    oValue = value;
    return true;
}

bool CORBAAny::operator>>(double& oValue) const
{
    if (_Held.kind != kDouble)
        return false;
    oValue = _Held.value.real;
    return true;
}

bool CORBAAny::operator>>(bool& oValue) const
{
    if (_Held.kind != kBoolean)
        return false;
    oValue = _Held.value.truth;
    return true;
}

bool CORBAAny::operator>>(const char*& oText) const
{
    if (_Held.kind != kString)
        return false;
    oText = reinterpret_cast<const char*>(_Held.owns ? _Held.value.block : _Held.value.octets);
    return true;
}

bool CORBAAny::operator>>(_SEQUENCE_octet& oOctets) const
{
    int count = 0;
    const unsigned char* const held = PeekOctets(count);
    if (!held)
        return false;
    OctetSequence& octets = oOctets;
    MakeRoom(octets, count);
    CopyOctets(octets.buffer(), held, count);
    octets.length(count);
    return true;
}

bool CORBAAny::operator>>(_SEQUENCE_CORBAAny& oAnys) const
{
    if (_Held.kind != kAnys)
        return false;
    // All is copied before the receiver is touched: this any may be an element of it.
    const int count = _Held.size;
    const std::unique_ptr<CORBAAny[]> copies = CopyOf(_Held.value.anys, count);
    AnySequence& anys = oAnys;
    MakeRoom(anys, count);
    std::move(copies.get(), copies.get() + count, anys.buffer());
    anys.length(count);
    return true;
}

// The bytes may be the any's own: they are copied before anything is dropped.
void CORBAAny::StoreBytes(Kind iKind, const void* iBytes, int iSize, int iRoom)
{
    if (!_Held.owns && iRoom <= kInlineOctets) {
        CopyOctets(_Held.value.octets, iBytes, iRoom);
        Become(iKind);
        _Held.size = iSize;
        return;
    }
    Held fresh;
    fresh.kind = static_cast<unsigned char>(iKind);
    fresh.owns = iRoom > kInlineOctets;
    fresh.unused = 0;
    fresh.size = iSize;
    if (fresh.owns)
        fresh.value.block = new unsigned char[static_cast<std::size_t>(iRoom)];
    if (iRoom > 0)
        std::memcpy(fresh.owns ? fresh.value.block : fresh.value.octets, iBytes,
                    static_cast<std::size_t>(iRoom));
    Drop();
    _Held = fresh;
}

void CORBAAny::StoreAnys(const CORBAAny* iAnys, int iCount)
{
    std::unique_ptr<CORBAAny[]> copies = iCount > 0 ? CopyOf(iAnys, iCount) : nullptr;
    Drop();
    Become(kAnys);
    _Held.size = iCount;
    _Held.owns = iCount > 0;
    _Held.value.anys = copies.release();
}

// Of an any that owns memory, into one that owns none.
void CORBAAny::Clone(const CORBAAny& iOther)
{
    Become(kEmpty);
    if (iOther._Held.kind == kAnys)
        StoreAnys(iOther._Held.value.anys, iOther._Held.size);
    else
        StoreBytes(iOther.type(), iOther._Held.value.block, iOther._Held.size,
                   iOther._Held.size + (iOther._Held.kind == kString ? 1 : 0));
}

void CORBAAny::Free() noexcept
{
    if (_Held.kind == kAnys)
        delete[] _Held.value.anys;
    else
        delete[] _Held.value.block;
}
