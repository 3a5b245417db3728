#include "TomlAdvice.h"

#include <algorithm>

namespace
{

bool Contains(std::string_view iText, std::string_view iPart)
{
    return iText.find(iPart) != std::string_view::npos;
}

// What begins with that character of that line.
std::string_view From(std::string_view iText, std::size_t iLine, std::size_t iColumn)
{
    for (; iLine > 1 && !iText.empty(); --iLine)
        iText.remove_prefix(std::min(iText.find('\n'), iText.size() - 1) + 1);
    const auto continues = [&] { return !iText.empty() && (iText[0] & 0xC0) == 0x80; };
    for (; iColumn > 1 && !iText.empty(); --iColumn)
        do
            iText.remove_prefix(1);
        while (continues());
    return iText;
}

bool IsEndOfLine(std::string_view iRest)
{
    return iRest.empty() || iRest[0] == '\n' || iRest.substr(0, 2) == "\r\n";
}

} // namespace

std::string TomlAdvice(std::string_view iComplaint, std::string_view iText, std::size_t iLine,
                       std::size_t iColumn)
{
    const bool ofText =
        Contains(iComplaint, "parsing string") || Contains(iComplaint, "parsing literal string");
    const bool ends =
        Contains(iComplaint, "control character") || Contains(iComplaint, "end-of-file");
    if (ofText && ends && IsEndOfLine(From(iText, iLine, iColumn)))
        return "the quotation mark at the end of the text is missing";
    if (Contains(iComplaint, "could not determine value type"))
        return "a text needs quotation marks around it";
    std::string advice(iComplaint);
    if (Contains(iComplaint, "unknown escape sequence"))
        advice += ": write each backslash twice, or the text in single quotation marks";
    return advice;
}
