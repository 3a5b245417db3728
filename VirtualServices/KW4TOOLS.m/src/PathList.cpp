#include "PathList.h"

#include "TextView.h"

namespace
{

std::size_t Index(char iByte)
{
    return static_cast<unsigned char>(iByte);
}

} // namespace

PathList::PathList(const ZORUnicodeString& iList, const ZORUnicodeString& iSeparator)
    : _Rest(View(iList)), _Byte(iSeparator.ConvertToChar()[0])
{
    if (iSeparator.GetLengthInBytes() <= 1)
        return;
    _Begins.fill(false);
    for (int i = 0; i < iSeparator.GetLengthInChar(); ++i) {
        _Characters.push_back(iSeparator.SubString(i, 1));
        _Begins[Index(_Characters.back().ConvertToChar()[0])] = true;
    }
}

// The length in bytes of the separator character at the offset; 0 when there is none.
std::size_t PathList::CharacterAt(std::size_t iOffset) const
{
    if (iOffset == _Rest.size() || !_Begins[Index(_Rest[iOffset])])
        return 0;
    for (const ZORUnicodeString& character : _Characters)
        if (_Rest.substr(iOffset, character.GetLengthInBytes()) == View(character))
            return character.GetLengthInBytes();
    return 0;
}

std::size_t PathList::FindCharacter() const
{
    std::size_t offset = 0;
    while (offset < _Rest.size() && CharacterAt(offset) == 0)
        ++offset;
    return offset;
}
