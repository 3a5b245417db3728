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
    _SEQUENCE_octet() = default;
    _SEQUENCE_octet(const _SEQUENCE_octet& iOther) : ZORSequenceOf() { Copy(iOther); }
    _SEQUENCE_octet(_SEQUENCE_octet&& iOther) noexcept = default;
    _SEQUENCE_octet& operator=(const _SEQUENCE_octet& iOther)
    {
        Copy(iOther);
        return *this;
    }
    _SEQUENCE_octet& operator=(_SEQUENCE_octet&& iOther) noexcept = default;

    void Assignation(const void* iSource, int iIndex) override;
};
