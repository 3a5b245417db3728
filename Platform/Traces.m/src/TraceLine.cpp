#include "TraceLine.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr std::size_t kFirstRoom = 256;

} // namespace

TraceLine::TraceLine() : _Room(kFirstRoom), _Stream(this)
{
    Clear();
}

TraceLine::~TraceLine() = default;

void TraceLine::Clear()
{
    setp(_Room.data(), _Room.data() + _Room.size());
    if (!_Stream.good())
        _Stream.clear();
}

void TraceLine::Complete()
{
    if (_Stream.good())
        return;
    if (pptr() == epptr())
        pbump(-1);
    *pptr() = '\n';
    pbump(1);
}

bool TraceLine::CanGrow(std::size_t iMore)
{
    try {
        Grow(iMore);
        return true;
    } catch (...) {
        _Stream.setstate(std::ios_base::badbit);
        return false;
    }
}

void TraceLine::Append(std::string_view iText)
{
    if (!CanTake(iText.size()))
        return;
    std::copy_n(iText.data(), iText.size(), pptr());
    Advance(iText.size());
}

void TraceLine::AppendBlanks(std::size_t iCount)
{
    if (!CanTake(iCount))
        return;
    std::fill_n(pptr(), iCount, ' ');
    Advance(iCount);
}

void TraceLine::Grow(std::size_t iMore)
{
    const std::size_t used = Text().size();
    _Room.resize(std::max(2 * _Room.size(), used + iMore));
    setp(_Room.data(), _Room.data() + _Room.size());
    Advance(used);
}

// pbump takes an int: a longer way is made in steps.
void TraceLine::Advance(std::size_t iCount)
{
    constexpr std::size_t kStep = 1U << 30;
    for (; iCount > kStep; iCount -= kStep)
        pbump(static_cast<int>(kStep));
    pbump(static_cast<int>(iCount));
}

TraceLine::int_type TraceLine::overflow(int_type iCharacter)
{
    if (traits_type::eq_int_type(iCharacter, traits_type::eof()))
        return traits_type::not_eof(iCharacter);
    Reserve(1);
    return sputc(traits_type::to_char_type(iCharacter));
}

std::streamsize TraceLine::xsputn(const char* iText, std::streamsize iCount)
{
    if (iCount == 0) // the text may be nowhere then
        return 0;
    const auto count = static_cast<std::size_t>(iCount);
    Reserve(count);
    std::memcpy(pptr(), iText, count);
    Advance(count);
    return iCount;
}
