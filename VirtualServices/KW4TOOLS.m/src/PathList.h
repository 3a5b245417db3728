#pragma once

#include "ZORUnicodeString.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

// The pieces of a path list, one after the other. Every character of the separator separates by
// itself; runs of separators count as one, those at the ends give nothing. With an empty separator
// the whole list is one piece. Reads the two texts in place: they must outlive it.
class PathList
{
public:
    PathList(const ZORUnicodeString& iList, const ZORUnicodeString& iSeparator);

    // The next piece, never empty; nothing when there is none left.
    std::optional<std::string_view> Next();

private:
    std::size_t SeparatorAt(std::size_t iOffset) const;
    std::size_t FindSeparator() const;

    std::string_view _Rest;
    std::string_view _Separator;
    // Of a separator of several bytes: its characters, and the bytes they begin with.
    std::vector<ZORUnicodeString> _Characters;
    std::array<bool, 256> _Begins;
};
