#pragma once

#include "Descriptor.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

// The reading of a settings file: whole, and never from anything but a regular file.

struct SettingsFile {
    Descriptor descriptor; // open for reading
    struct stat status;
    std::string bytes;
};

// The file of that name in the directory (AT_FDCWD: a path), or nothing when there is none;
// `iFlags` are further ones for open. Raises an error that names the file `iFile` when it is no
// regular file, too large or cannot be read, and does not wait for anybody.
std::optional<SettingsFile> ReadSettingsFile(const std::string& iFile, int iDirectory,
                                             const char* iName, int iFlags = 0);

// Raises an error when the file is not a regular one or larger than a settings file may be.
void RequireSettingsFile(const std::string& iFile, const struct stat& iStatus);
