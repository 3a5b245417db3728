#pragma once

#include "CORBAAny.h"
#include "ZORSequenceOf.h"

extern template class ZOR_EXPORT ZORSequenceOf<CORBAAny>;

// A sequence of anys. In configuration data it is a list of identifiers (each any holds octets), or
// an interval (one or two anys that hold a long: start and end).
//
//     _SEQUENCE_CORBAAny interval;
//     interval.maximum(2);
//     interval.length(2);
//     interval[0] << 10;
//     interval[1] << 20;
//
// Elements are empty anys until something is stored in them. A copy is a buffer of its own, of the
// source's room, with copies of the elements; its length is the smaller of the source's length and
// that room.
//
// Assignation, and with it the class's table of virtual operations, is defined by KW4TOOLS: a
// program that makes such a sequence links that library.
//
// Thread rule: as for an int. Two threads may use two sequences, or read one.
class ZOR_EXPORT _SEQUENCE_CORBAAny final : public ZORSequenceOf<CORBAAny>
{
public:
    // Empty: no room, no length.
    _SEQUENCE_CORBAAny() = default;
    // A copy with a buffer of its own, as told above.
    _SEQUENCE_CORBAAny(const _SEQUENCE_CORBAAny& iOther) : ZORSequenceOf() { Copy(iOther); }
    // Takes over the elements of the other, which is left empty.
    _SEQUENCE_CORBAAny(_SEQUENCE_CORBAAny&& iOther) noexcept = default;
    // Becomes a copy, as told above.
    _SEQUENCE_CORBAAny& operator=(const _SEQUENCE_CORBAAny& iOther)
    {
        Copy(iOther);
        return *this;
    }
    // Exchanges the elements with the other's.
    _SEQUENCE_CORBAAny& operator=(_SEQUENCE_CORBAAny&& iOther) noexcept = default;

    // Copies element `iIndex` of an array of anys into the element of that index.
    // REQUIRES: both have it.
    void Assignation(const void* iSource, int iIndex) override;
};
