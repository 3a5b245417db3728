#pragma once

#include "SettingsFile.h"
#include "SettingsLock.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

// A settings file that nobody else can replace as long as this object lives: read when the lock was
// had, and to be replaced as a whole.
//
// Every operation raises an error that names the file and the step when that fails.
class LockedSettings
{
public:
    // Follows symbolic links. The directory is made when it is missing.
    explicit LockedSettings(const std::string& iPath);

    // The path behind the links.
    const std::string& File() const { return _File; }
    // What the file held when it was read, given away; nothing when there is no file.
    std::string TakeBytes();
    // Writes the new bytes; the old file or the new one is there at any instant.
    void Replace(std::string_view iBytes) const;

private:
    int Directory() const { return _Directory.Get(); }

    const std::string _File;
    const std::string _Name;
    const Descriptor _Directory;
    const std::string _LockName;
    const std::string _Temporary;
    struct stat _Status {
    };
    const bool _Exists;
    const SettingsLock _Lock;
    std::optional<SettingsFile> _Old;
};
