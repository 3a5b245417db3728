#pragma once

#include "ZORExport.h"

// Root of the sequence classes: how many elements there is room for, how many are in use, and where
// they are. What they are is known only to the classes below it (ZORSequenceOf), which own and free
// the buffer; a bare `sequence` is never made.
//
//     void Report(const sequence& iAny)
//     {
//         std::cout << iAny.length() << " of " << iAny.maximum() << '\n';
//     }
//
// Elements are numbered from 0; those from 0 to length() - 1 are valid. The three fields and their
// order, and the single virtual operation, are part of the binary interface.
//
// Thread rule: as for an int. Two threads may use two sequences, or read one.
class ZOR_EXPORT sequence
{
public:
    // The number of elements for which the buffer has room.
    int maximum() const { return _maximum; }
    // The number of elements in use.
    int length() const { return _length; }
    // Sets the number of elements in use; the elements themselves stay as they are, also those that
    // fall out of use. REQUIRES: 0 <= iLength <= maximum().
    void length(long iLength) { _length = static_cast<int>(iLength); }

    // Copies elements 0 to iCount - 1 of the array at `iSource` over the first elements of the own
    // buffer, each with Assignation; nothing when iCount is below 1. The length stays as it is.
    // REQUIRES: `iSource` is an array of iCount elements of the own kind; iCount <= maximum().
    void boucle(const void* iSource, int iCount);

    // Reports an index out of range: raises a ZORInternalError whose text is "index out of range: "
    // and `iFormat`, in which each "%name" reads "name=" and the next of the four numbers.
    // REQUIRES: `iFormat` is not null.
    void exit(const char* iFormat, int iFirst, int iSecond, int iThird, int iFourth) const;

    // Copies element `iIndex` of the array at `iSource` over the element of the same index of the
    // own buffer. REQUIRES: both have that element. A sequence that does not say what its elements
    // are copies nothing.
    virtual void Assignation(const void* iSource, int iIndex);

protected:
    // Empty: maximum 0, length 0, no buffer.
    sequence() = default;
    // Two sequences never share a buffer: how a copy is made is for the class of the elements.
    sequence(const sequence& iOther) = delete;
    sequence& operator=(const sequence& iOther) = delete;
    // The buffer is freed by the class that knows its elements.
    ~sequence() = default;

    int _maximum = 0;        // room, in elements
    int _length = 0;         // elements in use
    void* _buffer = nullptr; // the elements, or null while there is no room
};
