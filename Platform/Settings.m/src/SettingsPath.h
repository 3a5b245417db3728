#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

// From the name of a settings file to its place, by the rule of ZORSettingRepository.h.

// The directories in their order; none when neither the variables nor a home directory name one.
std::vector<std::string> SettingsDirectories();

struct SettingsPlace {
    std::string path; // empty when there is no directory to keep the file in
    bool exists;
    struct stat status; // of the file behind the links, when it exists
};

// Costs one look at the file system for each directory. Raises an error when one cannot be looked
// into, or the name is empty.
SettingsPlace FindSettings(std::string_view iName);

// What stands before the last "/" of a path ("." when there is none) and behind it.
std::string DirectoryOf(std::string_view iPath);
std::string_view FileNameOf(std::string_view iPath);

// The path behind a chain of symbolic links; what is at its end need not exist. Raises an error
// when the chain loops.
std::string FollowLinks(std::string iPath);
