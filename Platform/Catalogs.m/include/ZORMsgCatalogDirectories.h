#pragma once

#include "ZORExport.h"

#include <string>
#include <vector>

// Where message catalogs are looked for, and which are there: what an administrator wants to see.
//
//     for (const ZORMsgCatalogDirectory& each : ZORMsgCatalogDirectories())
//         for (const std::string& name : each.names)
//             std::cout << each.path << '/' << name << '\n';
//
// A text is looked for by its key, so a file does not hide another of the same name in a later
// directory as a whole: its texts come before those of that one.

// One of the directories.
struct ZORMsgCatalogDirectory {
    std::string path; // as the environment names it
    // The catalog files in it, without ".toml", sorted by their bytes: "Site" for those that are
    // for all, "fr/Site" for those of a locale. Empty when the directory is missing or may not be
    // read.
    std::vector<std::string> names;
};

// The directories in the order of the search (see ZORMsgCatalog.h). Reads the environment and the
// directories afresh. Thread rule: any thread, while none changes the environment.
ZOR_EXPORT std::vector<ZORMsgCatalogDirectory> ZORMsgCatalogDirectories();
