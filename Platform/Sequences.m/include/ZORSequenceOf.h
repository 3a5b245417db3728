#pragma once

#include "sequence.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <new>
#include <utility>

// A sequence of elements of one type, which owns its buffer: room, element access, copies. A
// sequence class derives from it and says in Assignation how one element is copied:
//
//     class _SEQUENCE_Point final : public ZORSequenceOf<Point>
//     {
//     public:
//         _SEQUENCE_Point() = default;
//         _SEQUENCE_Point(const _SEQUENCE_Point& iOther) : ZORSequenceOf() { Copy(iOther); }
//         _SEQUENCE_Point(_SEQUENCE_Point&&) noexcept = default;
//         _SEQUENCE_Point& operator=(const _SEQUENCE_Point& iOther) { Copy(iOther); return *this; }
//         _SEQUENCE_Point& operator=(_SEQUENCE_Point&&) noexcept = default;
//         void Assignation(const void* iSource, int iIndex) override;
//     };
//
//     _SEQUENCE_Point points;
//     points.maximum(2);            // room for two
//     points.length(2);             // both in use
//     points[1] = Point{3, 4};
//
// The copying is left to the derived class because its Assignation does it, which cannot be reached
// while the base is being constructed. `Element` is default constructible and its moves do not
// throw.
//
// Thread rule: as for an int. Two threads may use two sequences, or read one.
template <class Element>
class ZORSequenceOf : public sequence
{
public:
    using sequence::maximum;

    // Sets the room to exactly the larger of `iRoom` and length(), never rounded up: a new array of
    // default-constructed elements takes over the elements in use, and the old array goes, with
    // what stood behind the length. Pointers and references to elements stay valid only when the
    // room was that already, in which case nothing happens. When memory does not suffice the
    // sequence is as it was and std::bad_alloc is thrown. Costs O(maximum).
    void maximum(long iRoom)
    {
        const long room = std::max<long>(_length, iRoom);
        if (room == _maximum)
            return;
        if (room > INT_MAX)
            throw std::bad_array_new_length();
        Element* const fresh = room < 1 ? nullptr : new Element[static_cast<std::size_t>(room)]();
        std::move(buffer(), buffer() + std::max(_length, 0), fresh);
        delete[] buffer();
        _buffer = fresh;
        _maximum = static_cast<int>(std::max(room, 0L));
    }

    // The elements, maximum() of them; null when there is no room. The sequence keeps them: they
    // stay until the room changes or the sequence goes.
    Element* buffer() { return static_cast<Element*>(_buffer); }
    const Element* buffer() const { return static_cast<const Element*>(_buffer); }

    // The element at `iIndex`. An index outside 0 to length() - 1 raises a ZORInternalError, but
    // for 0, which is never reported: callers rely on reaching the first element before the length
    // is set. REQUIRES: maximum() > 0.
    Element& operator[](int iIndex)
    {
        Check(iIndex);
        return buffer()[iIndex];
    }
    const Element& operator[](int iIndex) const
    {
        Check(iIndex);
        return buffer()[iIndex];
    }

protected:
    // Empty.
    ZORSequenceOf() = default;
    // The elements change hands; none is copied, and the other is left with what this one had.
    ZORSequenceOf(ZORSequenceOf&& iOther) noexcept : sequence() { Swap(iOther); }
    ZORSequenceOf& operator=(ZORSequenceOf&& iOther) noexcept
    {
        Swap(iOther);
        return *this;
    }
    // Destroys the elements, those behind the length included.
    ~ZORSequenceOf() { delete[] buffer(); }

    // Becomes a copy: the room is the other's, the length the smaller of the other's length and
    // that room, each element copied by Assignation. The basic guarantee holds when memory does not
    // suffice: the sequence is then empty, or complete but for some of its elements.
    void Copy(const ZORSequenceOf& iOther)
    {
        if (this == &iOther)
            return;
        _length = 0;
        maximum(iOther._maximum);
        const int count = std::min(iOther._length, _maximum);
        boucle(iOther._buffer, count);
        _length = count;
    }

    // Copies one element; see sequence::Assignation.
    void Assignation(const void* iSource, int iIndex) override = 0;

private:
    void Check(int iIndex) const
    {
        if ((iIndex < 0 || iIndex >= _length) && iIndex != 0)
            exit("operator[] : %length, %i", _length, iIndex, 0, 0);
    }

    void Swap(ZORSequenceOf& iOther) noexcept
    {
        std::swap(_maximum, iOther._maximum);
        std::swap(_length, iOther._length);
        std::swap(_buffer, iOther._buffer);
    }
};
