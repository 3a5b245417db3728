#include "PathList.h"

#include <algorithm>

namespace
{

std::string_view View(const ZORUnicodeString& iText)
{
    return {iText.ConvertToChar(), iText.GetLengthInBytes()};
}

std::size_t Index(char iByte)
{
    return static_cast<unsigned char>(iByte);
}

} // namespace

PathList::PathList(const ZORUnicodeString& iList, const ZORUnicodeString& iSeparator)
    : _Rest(View(iList)), _Separator(View(iSeparator))
{
    if (_Separator.size() <= 1)
        return;
    _Begins.fill(false);
    for (int i = 0; i < iSeparator.GetLengthInChar(); ++i) {
        _Characters.push_back(iSeparator.SubString(i, 1));
        _Begins[Index(_Characters.back().ConvertToChar()[0])] = true;
    }
}

std::optional<std::string_view> PathList::Next()
{
    while (const std::size_t length = SeparatorAt(0))
        _Rest.remove_prefix(length);
    if (_Rest.empty())
        return std::nullopt;
    const std::string_view piece = _Rest.substr(0, FindSeparator());
    _Rest.remove_prefix(piece.size());
    return piece;
}

// The length in bytes of the separator character at the offset; 0 when there is none.
std::size_t PathList::SeparatorAt(std::size_t iOffset) const
{
    if (iOffset == _Rest.size())
        return 0;
    if (_Characters.empty())
        return !_Separator.empty() && _Rest[iOffset] == _Separator.front() ? 1 : 0;
    if (!_Begins[Index(_Rest[iOffset])])
        return 0;
    for (const ZORUnicodeString& character : _Characters)
        if (_Rest.substr(iOffset, character.GetLengthInBytes()) == View(character))
            return character.GetLengthInBytes();
    return 0;
}

// The offset of the first separator character; the end when there is none.
std::size_t PathList::FindSeparator() const
{
    if (_Characters.empty())
        return _Separator.empty() ? _Rest.size()
                                  : std::min(_Rest.find(_Separator.front()), _Rest.size());
    std::size_t offset = 0;
    while (offset < _Rest.size() && SeparatorAt(offset) == 0)
        ++offset;
    return offset;
}
