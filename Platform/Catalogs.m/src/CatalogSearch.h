#pragma once

#include <string>
#include <string_view>
#include <vector>

// Where catalogs are looked for (the rule is in ZORMsgCatalog.h). Each reads the environment
// afresh.

// The directories in their order; that of the installed catalogs is the last.
std::vector<std::string> CatalogDirectories();

// Whether a catalog can have that name: the empty one and those with a "/" are no catalog's.
bool IsCatalogName(std::string_view iCatalog);

// The names of the sub-directories of such a directory, which may be missing, that a locale can
// have: the locales that catalogs may have texts for there.
std::vector<std::string> LocalesIn(const std::string& iDirectory);

// The names of the user's locales and of their languages, the preferred one first: for
// LANG=de_AT.UTF-8 the one list de_AT.UTF-8, de_AT, de. None when the user asks for none.
std::vector<std::vector<std::string>> LocaleNames();

// The paths at which texts of the catalog are looked for, the first one first. None for a name that
// no catalog can have.
std::vector<std::string> CatalogPaths(std::string_view iCatalog);

// The path of a catalog's file in that directory, for a locale or (empty) for all.
std::string CatalogPath(const std::string& iDirectory, std::string_view iLocale,
                        std::string_view iCatalog);
