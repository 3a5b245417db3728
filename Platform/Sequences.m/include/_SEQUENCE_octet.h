#pragma once

#include "ZORSequenceOf.h"

extern template class ZOR_EXPORT ZORSequenceOf<unsigned char>;

// A sequence of octets. In configuration data it is an object identifier.
//
//     _SEQUENCE_octet identifier;
//     identifier.maximum(2);
//     identifier.length(2);
//     identifier[0] = 0x1f;
//     identifier[1] = 0x80;
//
// Octets are 0 until they are set. A copy is a buffer of its own, of the source's room; its length
// is the smaller of the source's length and that room.
//
// Assignation, and with it the class's table of virtual operations, is defined by KW4TOOLS: a
// program that makes such a sequence links that library.
//
// Thread rule: as for an int. Two threads may use two sequences, or read one.
class ZOR_EXPORT _SEQUENCE_octet final : public ZORSequenceOf<unsigned char>
{
public:
    // Empty: no room, no length.
    _SEQUENCE_octet() = default;
    // A copy with a buffer of its own, as told above.
    _SEQUENCE_octet(const _SEQUENCE_octet& iOther) : ZORSequenceOf() { Copy(iOther); }
    // Takes over the elements of the other, which is left empty.
    _SEQUENCE_octet(_SEQUENCE_octet&& iOther) noexcept = default;
    // Becomes a copy, as told above.
    _SEQUENCE_octet& operator=(const _SEQUENCE_octet& iOther)
    {
        Copy(iOther);
        return *this;
    }
    // Exchanges the elements with the other's.
    _SEQUENCE_octet& operator=(_SEQUENCE_octet&& iOther) noexcept = default;

    // Copies element `iIndex` of an array of octets into the element of that index.
    // REQUIRES: both have it.
    void Assignation(const void* iSource, int iIndex) override;
};
