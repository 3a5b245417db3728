#pragma once

#include "ZORUnicodeString.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

// The pieces of a path list, one after the other. Every character of the separator separates by
// itself; runs of separators count as one, those at the ends give nothing. With an empty separator
// the whole list is one piece. Reads the list in place: it must outlive it.
class PathList
{
public:
    PathList(const ZORUnicodeString& iList, const ZORUnicodeString& iSeparator);

    // The next piece, never empty; nothing when there is none left.
    std::optional<std::string_view> Next()
    {
        SkipSeparators();
        if (_Rest.empty())
            return std::nullopt;
        const std::string_view piece = _Rest.substr(0, FindSeparator());
        _Rest.remove_prefix(piece.size());
        return piece;
    }

private:
    void SkipSeparators()
    {
        if (_Characters.empty())
            _Rest.remove_prefix(std::min(_Rest.find_first_not_of(_Byte), _Rest.size()));
        else
            while (const std::size_t length = CharacterAt(0))
                _Rest.remove_prefix(length);
    }
    // The offset of the first separator character; the end when there is none.
    std::size_t FindSeparator() const
    {
        return _Characters.empty() ? std::min(_Rest.find(_Byte), _Rest.size()) : FindCharacter();
    }
    std::size_t CharacterAt(std::size_t iOffset) const;
    std::size_t FindCharacter() const;

    std::string_view _Rest;
    char _Byte; // the separator of a single byte; NUL, which is in no text, when it is empty
    // Of a separator of several bytes: its characters, and the bytes they begin with.
    std::vector<ZORUnicodeString> _Characters;
    std::array<bool, 256> _Begins;
};
