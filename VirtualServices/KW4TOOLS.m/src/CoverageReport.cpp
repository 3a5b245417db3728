#include "CoverageReport.h"

#include <locale>
#include <new>
#include <string_view>

CoverageReport* CoverageReport::_Last = nullptr;

CoverageReport::CoverageReport(const char* iPath)
{
    static const AtExit atExit;
    _Last = this;
    imbue(std::locale::classic());
    std::ios::rdbuf(&_Lines);
    if (!_Lines.Open(iPath))
        setstate(failbit);
}

CoverageReport::~CoverageReport()
{
    if (_Last == this)
        _Last = nullptr;
}

CoverageReport::AtExit::~AtExit()
{
    if (_Last)
        _Last->_Lines.SendRest();
}

CoverageReport::Lines::~Lines()
{
    SendRest();
}

CoverageReport::Lines::int_type CoverageReport::Lines::overflow(int_type iCharacter)
{
    const char character = traits_type::to_char_type(iCharacter);
    if (!traits_type::eq_int_type(iCharacter, traits_type::eof()))
        xsputn(&character, 1);
    return traits_type::not_eof(iCharacter);
}

// Of a line that there is no memory for nothing is written, rather than half of it.
std::streamsize CoverageReport::Lines::xsputn(const char* iText, std::streamsize iCount)
{
    std::string_view text(iText, static_cast<std::size_t>(iCount));
    if (_Lost) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos)
            return iCount;
        text.remove_prefix(end + 1);
        _Lost = false;
    }
    try {
        _Line.append(text);
    } catch (const std::bad_alloc&) {
        _Line.clear();
        _Lost = !text.ends_with('\n');
        return iCount;
    }
    if (const std::size_t newline = text.rfind('\n'); newline != std::string_view::npos)
        Send(_Line.size() - text.size() + newline + 1);
    return iCount;
}

void CoverageReport::Lines::Send(std::size_t iLength)
{
    _File.Write(_Line.data(), iLength);
    _Line.erase(0, iLength);
}
