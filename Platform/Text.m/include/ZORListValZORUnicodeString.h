#pragma once

#include "ZORExport.h"
#include "ZORUnicodeString.h"

#include <cstddef>
#include <vector>

// A list of strings by value, indexed from 1.
//
//     ZORListValZORUnicodeString directories;
//     directories.Append("/usr/share/data");
//     for (int i = 1; i <= directories.Size(); ++i)
//         std::puts(directories[i].ConvertToChar());
//
// The strings lie side by side in memory, in the order they were added; what begin() or an index
// gives stays valid until a string is added or removed. Lack of memory is std::bad_alloc and leaves
// the list as it was.
//
// Thread rule: several threads may read one list at the same time; a list that is changed by one
// thread must not be used by another.
class ZOR_EXPORT ZORListValZORUnicodeString
{
public:
    // What the standard library's algorithms ask for.
    using value_type = ZORUnicodeString;
    using iterator = ZORUnicodeString*;
    using const_iterator = const ZORUnicodeString*;

    // An empty list.
    ZORListValZORUnicodeString() noexcept = default;
    // An empty list with room set aside for about `iCapacity` strings: a hint, and no limit.
    // Negative counts as 0; no more than a few thousand places are set aside beforehand.
    explicit ZORListValZORUnicodeString(int iCapacity);

    // The number of strings.
    int Size() const noexcept { return static_cast<int>(_Elements.size()); }

    // Adds a string at the end; it may be one of this list's own.
    void Append(const ZORUnicodeString& iText);
    void Append(ZORUnicodeString&& iText);
    // Adds all strings of a list, in order; it may be this very list.
    void Append(const ZORListValZORUnicodeString& iList);

    // The string at a position from 1 to Size(). Any other position raises a ZORInternalError that
    // names it.
    ZORUnicodeString& operator[](int iIndex)
    {
        CheckIndex(iIndex);
        return _Elements[static_cast<std::size_t>(iIndex) - 1];
    }
    const ZORUnicodeString& operator[](int iIndex) const
    {
        CheckIndex(iIndex);
        return _Elements[static_cast<std::size_t>(iIndex) - 1];
    }

    // Removes and frees all strings; the places in the list are kept for the next ones.
    void RemoveAll() noexcept { _Elements.clear(); }

    // For range-based for; pointers to the first string and past the last.
    iterator begin() noexcept { return _Elements.data(); }
    iterator end() noexcept { return _Elements.data() + _Elements.size(); }
    const_iterator begin() const noexcept { return _Elements.data(); }
    const_iterator end() const noexcept { return _Elements.data() + _Elements.size(); }

    // Whether both hold equal strings in the same order.
    friend bool operator==(const ZORListValZORUnicodeString& iLeft,
                           const ZORListValZORUnicodeString& iRight) noexcept
    {
        return iLeft._Elements == iRight._Elements;
    }
    friend bool operator!=(const ZORListValZORUnicodeString& iLeft,
                           const ZORListValZORUnicodeString& iRight) noexcept
    {
        return !(iLeft == iRight);
    }

private:
    void CheckIndex(int iIndex) const
    {
        if (iIndex < 1 || iIndex > Size())
            RaiseOutOfRange(iIndex);
    }
    [[noreturn]] void RaiseOutOfRange(int iIndex) const;

    std::vector<ZORUnicodeString> _Elements;
};
