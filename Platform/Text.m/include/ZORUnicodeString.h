#pragma once

#include "ZORExport.h"

#include <atomic>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

// Where ZORUnicodeString::SearchSubString begins.
enum ZORSearchMode : int {
    ZORSearchForward = 1,  // at the beginning of the text, for the first occurrence
    ZORSearchBackward = 2, // at its end, for the last one
};

// The ends ZORUnicodeString::Strip works on.
enum ZORStripMode : int {
    ZORStripLeading = 1,  // the beginning
    ZORStripTrailing = 2, // the end
    ZORStripBoth = 3,     // both
};

// Text of the suite: a value that holds UTF-8.
//
//     ZORUnicodeString path = "/home/élan/data";
//     int slash = path.SearchSubString("/", 0, ZORSearchBackward);                    // 10
//     ZORUnicodeString name = path.SubString(slash + 1, path.GetLengthInChar());      // "data"
//     std::puts(name.ConvertToChar());
//
// Lossless: any bytes other than NUL go in and come out unchanged. A character is a code point
// written as the Unicode standard's well-formed UTF-8 (no surrogate, no longer form than needed,
// nothing above U+10FFFF), or else one single byte. Positions and lengths count these characters,
// positions from 0; characters are compared and found whole, never a part of one. No locale plays
// a part, nothing is normalised.
//
// Cost: making a string copies its bytes and looks at nothing. The number of characters is found
// when it is first asked for (one pass over the bytes) and remembered; from then on a text whose
// characters are all single bytes, as ASCII is, is indexed in constant time, any other in one pass.
// Texts of at most 15 bytes allocate nothing. Lack of memory is std::bad_alloc, and leaves the
// string as it was.
//
// Limit: lengths and positions are `int`. A text of more than INT_MAX characters is kept whole, but
// its length is told as INT_MAX and what lies behind that position is not found.
//
// Thread rule: several threads may read one string at the same time; a string that is changed by
// one thread must not be used by another.
class ZOR_EXPORT ZORUnicodeString
{
public:
    // An empty text.
    ZORUnicodeString() noexcept = default;
    // A copy of the bytes before the terminating NUL; null gives an empty text.
    ZORUnicodeString(const char* iText);
    // A copy of `iSize` bytes, or of those before the first NUL among them; null gives an empty
    // text.
    ZORUnicodeString(const char* iBytes, std::size_t iSize);
    // The same for a view (or a std::string).
    explicit ZORUnicodeString(std::string_view iBytes);
    // Takes over the memory of a string: its bytes before the first NUL.
    explicit ZORUnicodeString(std::string&& iBytes) noexcept
        : _Bytes(std::move(iBytes)), _Count(kNotCounted)
    {
        _Bytes.resize(std::char_traits<char>::length(_Bytes.c_str()));
    }

    // A copy of the bytes.
    ZORUnicodeString(const ZORUnicodeString& iOther);
    ZORUnicodeString& operator=(const ZORUnicodeString& iOther);
    // Constant time, no allocation; leaves `iOther` empty.
    ZORUnicodeString(ZORUnicodeString&& iOther) noexcept : _Bytes(std::move(iOther._Bytes))
    {
        TakeCount(iOther);
    }
    ZORUnicodeString& operator=(ZORUnicodeString&& iOther) noexcept
    {
        _Bytes = std::move(iOther._Bytes);
        TakeCount(iOther);
        return *this;
    }
    // As construction from a character pointer. `iText` may point into this very string.
    ZORUnicodeString& operator=(const char* iText);
    ~ZORUnicodeString() = default;

    // The text as bytes with a NUL behind; never null. Owned by the string and valid until the
    // string is changed, moved from or destroyed. Constant time.
    const char* ConvertToChar() const noexcept { return _Bytes.c_str(); }
    // The number of characters.
    int GetLengthInChar() const noexcept;
    // The number of bytes. Constant time.
    std::size_t GetLengthInBytes() const noexcept { return _Bytes.size(); }
    // Whether there is no character at all. Constant time.
    bool IsEmpty() const noexcept { return _Bytes.empty(); }

    // Adds text at the end and returns this string; null adds nothing. The text may be this very
    // string or a part of it. Bytes that complete a character begun at the end form one with it.
    ZORUnicodeString& Append(const ZORUnicodeString& iText);
    ZORUnicodeString& Append(const char* iText);

    // The 0-based position of an occurrence of `iSub`, counted from the beginning of the text in
    // either mode, or -1 when there is none.
    // - ZORSearchForward: the first occurrence at position `iStart` or behind it.
    // - ZORSearchBackward: the last occurrence that leaves at least `iStart` characters behind it
    //   (0 searches the whole text).
    //
    // The empty sub-string is found where the search begins: at `iStart`, or `iStart` characters
    // before the end. A negative `iStart`, one greater than the length, or any other mode: -1.
    int SearchSubString(const ZORUnicodeString& iSub, int iStart = 0,
                        int iMode = ZORSearchForward) const;

    // A new string of the `iCount` characters from the 0-based position `iStart` on; a count that
    // reaches past the end stops there. Empty when `iStart` is negative or not below the length, or
    // when `iCount` is negative.
    ZORUnicodeString SubString(int iStart, int iCount) const;

    // Replaces the first occurrence of `iOld` by `iNew` (empty: removes it), in place, and returns
    // 1; returns 0, with nothing changed, when there is none or `iOld` is empty. Either argument
    // may be this very string.
    int ReplaceSubString(const ZORUnicodeString& iOld, const ZORUnicodeString& iNew);

    // Removes every character that is the byte `iCharacter` from the ends that `iMode` (a
    // ZORStripMode) names, in place; any other mode changes nothing. A byte above 127 stands for
    // itself alone and is never taken out of a character of several bytes.
    void Strip(int iMode, char iCharacter = ' ');

    // Order and equality of the bytes, as unsigned values (which is the order of the code points).
    // Null compares as the empty text. No temporary is made for a character pointer.
    friend bool operator==(const ZORUnicodeString& iLeft, const ZORUnicodeString& iRight) noexcept
    {
        return iLeft._Bytes == iRight._Bytes;
    }
    friend bool operator==(const ZORUnicodeString& iLeft, const char* iRight) noexcept
    {
        return iLeft._Bytes == ViewOf(iRight);
    }
    friend bool operator==(const char* iLeft, const ZORUnicodeString& iRight) noexcept
    {
        return iRight == iLeft;
    }
    friend bool operator!=(const ZORUnicodeString& iLeft, const ZORUnicodeString& iRight) noexcept
    {
        return !(iLeft == iRight);
    }
    friend bool operator!=(const ZORUnicodeString& iLeft, const char* iRight) noexcept
    {
        return !(iLeft == iRight);
    }
    friend bool operator!=(const char* iLeft, const ZORUnicodeString& iRight) noexcept
    {
        return !(iRight == iLeft);
    }
    friend bool operator<(const ZORUnicodeString& iLeft, const ZORUnicodeString& iRight) noexcept
    {
        return iLeft._Bytes < iRight._Bytes;
    }
    friend bool operator<(const ZORUnicodeString& iLeft, const char* iRight) noexcept
    {
        return iLeft._Bytes < ViewOf(iRight);
    }
    friend bool operator<(const char* iLeft, const ZORUnicodeString& iRight) noexcept
    {
        return ViewOf(iLeft) < iRight._Bytes;
    }

    // A new string of both texts, one behind the other, as by Append.
    friend ZORUnicodeString operator+(ZORUnicodeString iLeft, const ZORUnicodeString& iRight)
    {
        iLeft.Append(iRight);
        return iLeft;
    }
    friend ZORUnicodeString operator+(ZORUnicodeString iLeft, const char* iRight)
    {
        iLeft.Append(iRight);
        return iLeft;
    }
    friend ZORUnicodeString operator+(const char* iLeft, const ZORUnicodeString& iRight)
    {
        return ZORUnicodeString(iLeft) + iRight;
    }

    // Writes the bytes as they are; width and fill of the stream count bytes.
    ZOR_EXPORT friend std::ostream& operator<<(std::ostream& ioStream,
                                               const ZORUnicodeString& iText);

private:
    static constexpr std::size_t kNotCounted = static_cast<std::size_t>(-1);

    static std::string_view ViewOf(const char* iText) noexcept
    {
        return iText ? std::string_view(iText) : std::string_view();
    }

    // The second half of a move: leaves `iOther` empty.
    void TakeCount(ZORUnicodeString& iOther) noexcept
    {
        SetCount(iOther.KnownCount());
        iOther._Bytes.clear();
        iOther.SetCount(0);
    }
    std::size_t KnownCount() const noexcept { return _Count.load(std::memory_order_relaxed); }
    void SetCount(std::size_t iCount) const noexcept
    {
        _Count.store(iCount, std::memory_order_relaxed);
    }
    ZOR_HIDDEN std::size_t Count() const noexcept;
    ZOR_HIDDEN std::size_t OffsetOf(std::size_t iPosition) const noexcept;
    ZOR_HIDDEN int PositionOf(std::size_t iOffset) const noexcept;
    ZOR_HIDDEN void AppendBytes(std::string_view iBytes);

    std::string _Bytes;
    // Characters, or kNotCounted. Relaxed access is enough: all readers that count find the same
    // number, and nothing else hangs on it.
    mutable std::atomic<std::size_t> _Count{0};
};
