#include "Colours.h"

#include <cstdlib>
#include <unistd.h>

namespace
{

std::string_view Variable(const char* iName)
{
    const char* const value = std::getenv(iName);
    return value ? value : "";
}

} // namespace

Colours::Colours(int iDescriptor)
    : _On(Variable("NO_COLOR").empty() && Variable("TERM") != "dumb" && isatty(iDescriptor) == 1)
{
}

std::string Colours::Painted(std::string_view iColour, std::string_view iText) const
{
    std::string painted;
    if (_On)
        ((painted += "\033[") += iColour) += 'm';
    painted += iText;
    if (_On)
        painted += "\033[0m";
    return painted;
}
