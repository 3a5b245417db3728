#pragma once

#include <string>
#include <string_view>
#include <vector>

// Puts the parameters into the places {1} to {99} of a message. A place whose parameter is not
// given stays as written; {{ is one brace; any other brace is text. What a parameter holds is never
// expanded.
std::string FillPlaces(std::string_view iText, const std::vector<std::string>& iParameters);
