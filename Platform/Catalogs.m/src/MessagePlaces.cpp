#include "MessagePlaces.h"

namespace
{

bool IsDigit(char iCharacter)
{
    return iCharacter >= '0' && iCharacter <= '9';
}

// A piece of a message: a place, or text that stands for itself.
struct Piece {
    int place;             // its number, or 0
    std::string_view text; // what it stands for while nothing is put in
    std::size_t length;    // in the message
};

// The piece that `iText`, which begins with a brace, begins with.
Piece BracePiece(std::string_view iText)
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

template <class Take>
void ForEachPiece(std::string_view iText, Take iTake)
{
    while (!iText.empty()) {
        const std::size_t plain = iText.find('{');
        const Piece piece = plain == 0
                                ? BracePiece(iText)
                                : Piece{0, iText.substr(0, plain), iText.substr(0, plain).size()};
        iTake(piece);
        iText.remove_prefix(piece.length);
    }
}

} // namespace

std::string FillPlaces(std::string_view iText, const std::vector<std::string_view>& iParameters)
{
    std::string filled;
    ForEachPiece(iText, [&](const Piece& piece) {
        const auto place = static_cast<std::size_t>(piece.place);
        if (place >= 1 && place <= iParameters.size())
            filled += iParameters[place - 1];
        else
            filled += piece.text;
    });
    return filled;
}

std::set<int> PlacesIn(std::string_view iText)
{
    std::set<int> places;
    ForEachPiece(iText, [&](const Piece& piece) {
        if (piece.place > 0)
            places.insert(piece.place);
    });
    return places;
}
