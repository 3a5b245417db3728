#include "ZORUnicodeString.h"

#include "Utf8Characters.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <ostream>

// A text whose characters are as many as its bytes has single-byte characters only, so its
// positions are its byte offsets: this covers ASCII, and text of any single-byte character set.

namespace
{

constexpr std::size_t kNowhere = std::string_view::npos;

std::string_view UpToNul(const char* iBytes, std::size_t iSize)
{
    return iBytes ? std::string_view(iBytes, strnlen(iBytes, iSize)) : std::string_view();
}

// Whether `iSize` bytes at `iOffset` are whole characters. They are, wherever they are found, when
// they are well-formed; a lone byte may also be found inside a character.
bool IsWhole(std::string_view iText, std::size_t iOffset, std::size_t iSize)
{
    return Utf8IsBoundary(iText, iOffset) && Utf8IsBoundary(iText, iOffset + iSize);
}

std::size_t FindForward(std::string_view iText, std::string_view iSub, std::size_t iFrom)
{
    std::size_t at = iText.find(iSub, iFrom);
    while (at != kNowhere && !IsWhole(iText, at, iSub.size()))
        at = iText.find(iSub, at + 1);
    return at;
}

std::size_t FindBackward(std::string_view iText, std::string_view iSub)
{
    std::size_t at = iText.rfind(iSub);
    while (at != kNowhere && !IsWhole(iText, at, iSub.size()))
        at = at > 0 ? iText.rfind(iSub, at - 1) : kNowhere;
    return at;
}

} // namespace

ZORUnicodeString::ZORUnicodeString(const char* iText) : _Bytes(ViewOf(iText)), _Count(kNotCounted)
{
}

ZORUnicodeString::ZORUnicodeString(const char* iBytes, std::size_t iSize)
    : _Bytes(UpToNul(iBytes, iSize)), _Count(kNotCounted)
{
}

ZORUnicodeString::ZORUnicodeString(std::string_view iBytes)
    : ZORUnicodeString(iBytes.data(), iBytes.size())
{
}

ZORUnicodeString::ZORUnicodeString(const ZORUnicodeString& iOther)
    : _Bytes(iOther._Bytes), _Count(iOther.KnownCount())
{
}

ZORUnicodeString& ZORUnicodeString::operator=(const ZORUnicodeString& iOther)
{
    _Bytes = iOther._Bytes;
    SetCount(iOther.KnownCount());
    return *this;
}

ZORUnicodeString& ZORUnicodeString::operator=(const char* iText)
{
    _Bytes.assign(ViewOf(iText));
    SetCount(kNotCounted);
    return *this;
}

std::size_t ZORUnicodeString::Count() const noexcept
{
    std::size_t count = KnownCount();
    if (count == kNotCounted) {
        count = Utf8Count(_Bytes);
        SetCount(count);
    }
    return count;
}

std::size_t ZORUnicodeString::OffsetOf(std::size_t iPosition) const noexcept
{
    return Count() == _Bytes.size() ? iPosition : Utf8Offset(_Bytes, iPosition);
}

int ZORUnicodeString::PositionOf(std::size_t iOffset) const noexcept
{
    if (iOffset == kNowhere)
        return -1;
    const std::size_t position =
        Count() == _Bytes.size() ? iOffset : Utf8Count(std::string_view(_Bytes).substr(0, iOffset));
    return position <= INT_MAX ? static_cast<int>(position) : -1;
}

int ZORUnicodeString::GetLengthInChar() const noexcept
{
    return static_cast<int>(std::min<std::size_t>(Count(), INT_MAX));
}

void ZORUnicodeString::AppendBytes(std::string_view iBytes)
{
    const std::size_t before = _Bytes.size();
    _Bytes.append(iBytes);
    if (KnownCount() == kNotCounted)
        return;
    const std::string_view added = std::string_view(_Bytes).substr(before);
    SetCount(Utf8MayContinue(added) ? kNotCounted : KnownCount() + Utf8Count(added));
}

ZORUnicodeString& ZORUnicodeString::Append(const ZORUnicodeString& iText)
{
    AppendBytes(iText._Bytes);
    return *this;
}

ZORUnicodeString& ZORUnicodeString::Append(const char* iText)
{
    AppendBytes(ViewOf(iText));
    return *this;
}

int ZORUnicodeString::SearchSubString(const ZORUnicodeString& iSub, int iStart, int iMode) const
{
    const std::size_t length = Count();
    if (iStart < 0 || static_cast<std::size_t>(iStart) > length)
        return -1;
    const std::size_t start = static_cast<std::size_t>(iStart);
    const std::string_view text = _Bytes;
    switch (iMode) {
    case ZORSearchForward:
        return PositionOf(FindForward(text, iSub._Bytes, OffsetOf(start)));
    case ZORSearchBackward:
        return PositionOf(FindBackward(text.substr(0, OffsetOf(length - start)), iSub._Bytes));
    default:
        return -1;
    }
}

ZORUnicodeString ZORUnicodeString::SubString(int iStart, int iCount) const
{
    ZORUnicodeString result;
    if (iStart < 0 || static_cast<std::size_t>(iStart) >= Count() || iCount <= 0)
        return result;
    const std::size_t start = static_cast<std::size_t>(iStart);
    const std::size_t count = std::min(static_cast<std::size_t>(iCount), Count() - start);
    const std::string_view rest = std::string_view(_Bytes).substr(OffsetOf(start));
    result._Bytes = rest.substr(0, Count() == _Bytes.size() ? count : Utf8Offset(rest, count));
    result.SetCount(count);
    return result;
}

int ZORUnicodeString::ReplaceSubString(const ZORUnicodeString& iOld, const ZORUnicodeString& iNew)
{
    const std::size_t at = iOld.IsEmpty() ? kNowhere : FindForward(_Bytes, iOld._Bytes, 0);
    if (at == kNowhere)
        return 0;
    _Bytes.replace(at, iOld._Bytes.size(), iNew._Bytes);
    SetCount(kNotCounted);
    return 1;
}

void ZORUnicodeString::Strip(int iMode, char iCharacter)
{
    std::string_view rest = _Bytes;
    if (iMode == ZORStripLeading || iMode == ZORStripBoth)
        while (!rest.empty() && rest.front() == iCharacter && Utf8FirstLength(rest) == 1)
            rest.remove_prefix(1);
    if (iMode == ZORStripTrailing || iMode == ZORStripBoth)
        while (!rest.empty() && rest.back() == iCharacter && Utf8IsBoundary(rest, rest.size() - 1))
            rest.remove_suffix(1);
    const std::size_t stripped = _Bytes.size() - rest.size();
    if (stripped == 0)
        return;
    _Bytes.assign(rest);
    if (KnownCount() != kNotCounted)
        SetCount(KnownCount() - stripped);
}

std::ostream& operator<<(std::ostream& ioStream, const ZORUnicodeString& iText)
{
    return ioStream << iText._Bytes;
}
