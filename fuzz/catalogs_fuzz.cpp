// The text of a message catalog: whatever it is, it is read or refused with the line, and each of
// its texts can be built.
#include "CatalogFailure.h"
#include "CatalogText.h"
#include "FuzzInput.h"
#include "MessagePlaces.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace
{

// Parameters that are what their places look like.
std::vector<std::string> PlacesAsParameters()
{
    std::vector<std::string> parameters;
    for (int place = 1; place <= 99; ++place)
        parameters.push_back("{" + std::to_string(place) + "}");
    return parameters;
}

void Build(const std::string& iText)
{
    static const std::vector<std::string> asPlaces = PlacesAsParameters();
    Require(FillPlaces(iText, {asPlaces.begin(), asPlaces.end()}) == FillPlaces(iText, {}));
    for (const int place : PlacesIn(iText)) {
        Require(place >= 1 && place <= 99);
        const std::vector<std::string_view> empty(static_cast<std::size_t>(place));
        Require(FillPlaces(iText, empty).size() < iText.size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    try {
        const std::string_view bytes(reinterpret_cast<const char*>(iBytes), iSize);
        const CatalogText catalog = ParseCatalog("fuzzed", bytes);
        for (const auto& [key, text] : catalog.texts)
            Build(text);
    } catch (const CatalogFailure& failure) {
        Require(std::string(failure.what()).rfind("message catalog fuzzed: line ", 0) == 0);
    }
    Build(std::string(reinterpret_cast<const char*>(iBytes), iSize));
    return 0;
}
