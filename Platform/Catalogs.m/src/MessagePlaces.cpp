#include "MessagePlaces.h"

namespace
{

bool IsDigit(char iCharacter)
{
    return iCharacter >= '0' && iCharacter <= '9';
}

// The piece that `iText`, which begins with a brace, begins with.
MessagePiece BracePiece(std::string_view iText)
{
    if (iText.substr(0, 2) == "{{")
        return {0, "{", 2};
    int number = 0;
    std::size_t end = 1;
    while (end < iText.size() && end <= 2 && IsDigit(iText[end]))
        number = number * 10 + (iText[end++] - '0');
    const bool closed = end < iText.size() && iText[end] == '}';
    if (end > 1 && iText[1] != '0' && closed)
        return {number, iText.substr(0, end + 1), end + 1};
    return {0, "{", 1};
}

} // namespace

MessagePiece FirstPiece(std::string_view iText)
{
    const std::string_view plain = iText.substr(0, iText.find('{'));
    return plain.empty() ? BracePiece(iText) : MessagePiece{0, plain, plain.size()};
}

std::string FillPlaces(std::string_view iText, const std::vector<std::string_view>& iParameters)
{
    return FillPlaces(iText, iParameters.size(), [&](std::size_t i) { return iParameters[i]; });
}

std::set<int> PlacesIn(std::string_view iText)
{
    std::set<int> places;
    ForEachPiece(iText, [&](const MessagePiece& piece) {
        if (piece.place > 0)
            places.insert(piece.place);
    });
    return places;
}

int GreatestPlace(std::string_view iText)
{
    int greatest = 0;
    ForEachPiece(iText,
                 [&](const MessagePiece& piece) { greatest = std::max(greatest, piece.place); });
    return greatest;
}
