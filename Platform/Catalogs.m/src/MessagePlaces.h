#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// The places {1} to {99} of a message; {{ is one brace, any other brace is text.

// A piece of a message: a place, or text that stands for itself.
struct MessagePiece {
    int place;             // its number, or 0
    std::string_view text; // what it stands for while nothing is put in
    std::size_t length;    // in the message
};

// The piece that the message begins with, which is not empty.
MessagePiece FirstPiece(std::string_view iText);

template <class Take>
void ForEachPiece(std::string_view iText, Take iTake)
{
    while (!iText.empty()) {
        const MessagePiece piece = FirstPiece(iText);
        iTake(piece);
        iText.remove_prefix(piece.length);
    }
}

// Puts the parameters into the places. A place whose parameter is not given stays as written. What
// a parameter holds is never expanded. `iParameter(i)` gives the view of parameter i, from 0 to
// `iCount` - 1; it is asked for those that have a place.
template <class Parameter>
std::string FillPlaces(std::string_view iText, std::size_t iCount, Parameter iParameter)
{
    constexpr std::size_t kUsualGrowth = 64;
    std::string filled;
    filled.reserve(iText.size() + kUsualGrowth);
    ForEachPiece(iText, [&](const MessagePiece& piece) {
        const auto place = static_cast<std::size_t>(piece.place);
        filled += place >= 1 && place <= iCount ? iParameter(place - 1) : piece.text;
    });
    return filled;
}
std::string FillPlaces(std::string_view iText, const std::vector<std::string_view>& iParameters);

// The numbers of the places in the text.
std::set<int> PlacesIn(std::string_view iText);
// The greatest of them; 0 when there is none.
int GreatestPlace(std::string_view iText);
