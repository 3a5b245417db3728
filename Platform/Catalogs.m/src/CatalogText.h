#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

// What a catalog file says: its texts by key, a dotted path.
struct CatalogText {
    std::map<std::string, std::string, std::less<>> texts;
    std::set<std::string> others; // keys whose values are no texts, or have a NUL
};

// Reads TOML. Raises a CatalogFailure that names `iFile`, line and column when that is damaged.
CatalogText ParseCatalog(const std::string& iFile, std::string_view iBytes);
