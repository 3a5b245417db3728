#pragma once

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <string>

// A directory of message catalogs of the test's own, for a user without a locale, until the end of
// the scope.
class CatalogSite
{
public:
    // Writes the file of that name: "fr/Site" or, for all locales, "Site".
    std::string Write(const std::string& iName, const std::string& iText) const
    {
        return _Directory.Write(iName + ".toml", iText);
    }
    const ScopedDirectory& Directory() const { return _Directory; }

private:
    ScopedDirectory _Directory;
    ScopedEnvironment _Path{"ZOR_CATALOG_PATH", _Directory.Path().string()};
    ScopedEnvironment _List{"LANGUAGE", std::nullopt};
    ScopedEnvironment _All{"LC_ALL", std::nullopt};
    ScopedEnvironment _Messages{"LC_MESSAGES", std::nullopt};
    ScopedEnvironment _Language{"LANG", std::nullopt};
};
