#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

// What a catalog file says: its texts by key, a dotted path.
struct CatalogText {
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> texts;
    std::set<std::string> others; // keys whose values are no texts, or have a NUL
};

// Reads TOML. Raises a CatalogFailure that names `iFile`, line and column when that is damaged.
CatalogText ParseCatalog(const std::string& iFile, std::string_view iBytes);
