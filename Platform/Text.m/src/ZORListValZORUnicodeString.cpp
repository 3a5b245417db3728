#include "ZORListValZORUnicodeString.h"

#include "RaiseWithText.h"
#include "ZORInternalError.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace
{

// Callers take the number from computed values: a wild one must not take the machine's memory.
constexpr int kMostReserved = 4096;

} // namespace

ZORListValZORUnicodeString::ZORListValZORUnicodeString(int iCapacity)
{
    _Elements.reserve(static_cast<std::size_t>(std::clamp(iCapacity, 0, kMostReserved)));
}

void ZORListValZORUnicodeString::Append(const ZORUnicodeString& iText)
{
    _Elements.push_back(iText);
}

void ZORListValZORUnicodeString::Append(ZORUnicodeString&& iText)
{
    _Elements.push_back(std::move(iText));
}

void ZORListValZORUnicodeString::Append(const ZORListValZORUnicodeString& iList)
{
    // Copied first: it may be this list, and a failure must leave this one as it was.
    std::vector<ZORUnicodeString> added = iList._Elements;
    _Elements.insert(_Elements.end(), std::make_move_iterator(added.begin()),
                     std::make_move_iterator(added.end()));
}

void ZORListValZORUnicodeString::RaiseOutOfRange(int iIndex) const
{
    const std::string message = "list index " + std::to_string(iIndex) +
                                " is out of range: the list has " + std::to_string(Size()) +
                                (Size() == 1 ? " element" : " elements") + ", counted from 1";
    RaiseWithText<ZORInternalError>(message, "Platform/Text.m/src/ZORListValZORUnicodeString",
                                    __LINE__);
}
