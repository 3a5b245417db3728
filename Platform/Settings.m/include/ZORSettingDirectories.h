#pragma once

#include "ZORExport.h"

#include <string>
#include <vector>

// Where settings files are looked for, and which are there: what an administrator wants to see.
//
//     for (const ZORSettingDirectory& each : ZORSettingDirectories())
//         for (const std::string& name : each.names)
//             std::cout << each.path << '/' << name << '\n';
//
// A name that an earlier directory has too is hidden by that one.

// One of the directories.
struct ZORSettingDirectory {
    std::string path; // as the environment names it
    // The settings files in it, as GetRepository takes them (without ".toml"), sorted by their
    // bytes. Empty when the directory is missing or may not be read.
    std::vector<std::string> names;
};

// The directories in the order of the search (see ZORSettingRepository.h); none when nothing names
// one. Reads the environment and the directories afresh. Thread rule: any thread, while none
// changes the environment.
ZOR_EXPORT std::vector<ZORSettingDirectory> ZORSettingDirectories();
