#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

// The places {1} to {99} of a message; {{ is one brace, any other brace is text.

// Puts the parameters into the places. A place whose parameter is not given stays as written. What
// a parameter holds is never expanded.
std::string FillPlaces(std::string_view iText, const std::vector<std::string_view>& iParameters);

// The numbers of the places in the text.
std::set<int> PlacesIn(std::string_view iText);
