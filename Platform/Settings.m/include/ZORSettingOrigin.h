#pragma once

#include "ZORExport.h"

#include <cstddef>
#include <optional>
#include <string>

// Where a setting comes from: what one who wants to change it by hand has to know.
//
//     if (const auto origin = ZORFindSettingOrigin("DUXAdmin", "DUX_SEARCH_PATH"))
//         std::cout << origin->file << ':' << origin->line << '\n';

// The place of an attribute.
struct ZORSettingOrigin {
    std::string file;   // its path, as the search for the settings file makes it
    std::size_t line;   // from 1
    std::size_t column; // of the attribute's name, in characters from 1
};

// The place of the attribute of that name in the settings file `iFile` (a name or a path with a
// "/", see ZORSettingRepository.h); nothing when the file has none, or is not there. Raises a
// ZORSettingError when a name is null or that of the file empty, or the file is damaged or cannot
// be read. Thread rule: any thread, while none changes the environment.
ZOR_EXPORT std::optional<ZORSettingOrigin> ZORFindSettingOrigin(const char* iFile,
                                                                const char* iName);
