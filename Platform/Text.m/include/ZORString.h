#pragma once

#include "ZORBaseUnknown.h"
#include "ZORClass.h"

#include <cstddef>
#include <string>
#include <string_view>

class ZORUnicodeString;

// Single-byte text as a component: an item of a settings attribute, a buffer to build lines in.
//
//     ZORString* item = new ZORString("DUX_SEARCH_PATH");
//     if (item && *item == "DUX_SEARCH_PATH")
//         std::puts(*item);
//     if (item)
//         item->Release();
//
// Holds any bytes without NUL and knows no character set: lengths count bytes. It may also live on
// the stack or inside another object, where no reference may outlive it.
//
// `new` yields null when there is no memory for the object; std::bad_alloc is raised when there is
// none for a text of more than 15 bytes, and the string is then as it was.
//
// Thread rule: several threads may read one string at the same time; a string that is changed by
// one thread must not be used by another.
class ZOR_EXPORT ZORString : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS

public:
    // An empty text.
    ZORString();
    // A copy of the text; null gives an empty one.
    ZORString(const char* iText);
    // A copy of the bytes of the text.
    explicit ZORString(const ZORUnicodeString& iText);
    // A component of its own with the same text.
    ZORString(const ZORString& iOther);
    ~ZORString() override;

    // Takes over a copy of the text; null gives an empty one. Room once taken is kept, so that a
    // string that is filled again and again stops allocating. The text may be this very string's or
    // a part of it.
    ZORString& operator=(const ZORString& iOther);
    ZORString& operator=(const char* iText);
    ZORString& operator=(const ZORUnicodeString& iText);

    // The text with a NUL behind; never null. Owned by the string and valid until the string is
    // changed or destroyed. Constant time.
    const char* ConvertToChar() const noexcept { return _Text.c_str(); }
    operator const char*() const noexcept { return _Text.c_str(); }

    // The number of bytes. Constant time.
    std::size_t GetLength() const noexcept { return _Text.size(); }
    // Whether there is no byte at all. Constant time.
    bool IsEmpty() const noexcept { return _Text.empty(); }

    // Adds text at the end and returns this string; null adds nothing. The text may be this very
    // string's or a part of it.
    ZORString& Append(const char* iText);
    // The same for `iSize` bytes, or those before the first NUL among them.
    ZORString& Append(const char* iBytes, std::size_t iSize);

    // Equality of the bytes; null compares as the empty text.
    friend bool operator==(const ZORString& iLeft, const ZORString& iRight) noexcept
    {
        return iLeft._Text == iRight._Text;
    }
    friend bool operator==(const ZORString& iLeft, const char* iRight) noexcept
    {
        return iLeft._Text == (iRight ? std::string_view(iRight) : std::string_view());
    }
    friend bool operator==(const char* iLeft, const ZORString& iRight) noexcept
    {
        return iRight == iLeft;
    }
    friend bool operator!=(const ZORString& iLeft, const ZORString& iRight) noexcept
    {
        return !(iLeft == iRight);
    }
    friend bool operator!=(const ZORString& iLeft, const char* iRight) noexcept
    {
        return !(iLeft == iRight);
    }
    friend bool operator!=(const char* iLeft, const ZORString& iRight) noexcept
    {
        return !(iRight == iLeft);
    }

private:
    std::string _Text;
};
