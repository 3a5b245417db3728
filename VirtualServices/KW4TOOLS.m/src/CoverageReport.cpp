#include "CoverageReport.h"

#include <locale>

CoverageReport::CoverageReport(const char* iPath)
{
    imbue(std::locale::classic());
    std::ios::rdbuf(&_Lines);
    if (!_Lines.Open(iPath))
        setstate(failbit);
}

CoverageReport::~CoverageReport() = default;

CoverageReport::Lines::~Lines()
{
    Send(_Line.size());
}

CoverageReport::Lines::int_type CoverageReport::Lines::overflow(int_type iCharacter)
{
    const char character = traits_type::to_char_type(iCharacter);
    if (!traits_type::eq_int_type(iCharacter, traits_type::eof()))
        xsputn(&character, 1);
    return traits_type::not_eof(iCharacter);
}

std::streamsize CoverageReport::Lines::xsputn(const char* iText, std::streamsize iCount)
{
    _Line.append(iText, static_cast<std::size_t>(iCount));
    if (const std::size_t newline = _Line.rfind('\n'); newline != std::string::npos)
        Send(newline + 1);
    return iCount;
}

void CoverageReport::Lines::Send(std::size_t iLength)
{
    if (iLength > 0)
        _File.Write(_Line.data(), iLength);
    _Line.erase(0, iLength);
}
