#include "MessagePlaces.h"

namespace
{

bool IsDigit(char iCharacter)
{
    return iCharacter >= '0' && iCharacter <= '9';
}

struct Place {
    std::size_t number; // 1-based; 0 when the text does not begin with a place
    std::size_t length; // in bytes, braces included
};

// The place that `iText`, which begins with a brace, begins with.
Place PlaceAt(std::string_view iText)
{
    std::size_t number = 0;
    std::size_t end = 1;
    while (end < iText.size() && end <= 2 && IsDigit(iText[end]))
        number = number * 10 + static_cast<std::size_t>(iText[end++] - '0');
    const bool closed = end < iText.size() && iText[end] == '}';
    const bool plain = end > 1 && iText[1] != '0';
    return closed && plain ? Place{number, end + 1} : Place{0, 1};
}

} // namespace

std::string FillPlaces(std::string_view iText, const std::vector<std::string>& iParameters)
{
    std::string filled;
    while (true) {
        const std::size_t brace = iText.find('{');
        filled.append(iText.substr(0, brace));
        if (brace == std::string_view::npos)
            return filled;
        iText.remove_prefix(brace);
        if (iText.substr(0, 2) == "{{") {
            filled += '{';
            iText.remove_prefix(2);
            continue;
        }
        const Place place = PlaceAt(iText);
        if (place.number != 0 && place.number <= iParameters.size())
            filled += iParameters[place.number - 1];
        else
            filled.append(iText.substr(0, place.length));
        iText.remove_prefix(place.length);
    }
}
