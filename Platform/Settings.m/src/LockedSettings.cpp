#include "LockedSettings.h"

#include "FileReplacement.h"
#include "SettingsFailure.h"
#include "SettingsPath.h"

#include <fcntl.h>

namespace
{

Descriptor OpenDirectory(const std::string& iDirectory)
{
    return Descriptor(Uninterrupted(
        [&] { return open(iDirectory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
}

// Makes the directory, for its owner alone, and what is missing above it. Whoever else makes it at
// the same time is welcome.
void MakeDirectory(const std::string& iFile, const std::string& iDirectory)
{
    const std::string above = DirectoryOf(iDirectory);
    int made = mkdir(iDirectory.c_str(), 0700);
    if (made != 0 && errno == ENOENT && above != iDirectory) {
        MakeDirectory(iFile, above);
        made = mkdir(iDirectory.c_str(), 0700);
    }
    if (made != 0 && errno == EEXIST)
        return;
    if (made != 0)
        RaiseSystemFailure(iFile, "make the directory " + iDirectory, errno);
    const Descriptor opened = OpenDirectory(above);
    if (opened && !SyncDirectory(opened.Get()))
        RaiseSystemFailure(iFile, "sync the directory " + above, errno);
}

// The directory of the file; made when it is missing, but never one that only a link leads to: that
// may be a disk which is not there just now.
Descriptor OpenDirectoryOf(const std::string& iTarget, bool iMayMake)
{
    const std::string path = DirectoryOf(iTarget);
    Descriptor directory = OpenDirectory(path);
    if (!directory && errno == ENOENT && iMayMake) {
        MakeDirectory(iTarget, path);
        directory = OpenDirectory(path);
    }
    if (!directory)
        RaiseSystemFailure(iTarget, "open the directory " + path, errno);
    return directory;
}

// The names beside the file `iName`, hidden ones, without its ".toml": a settings file is locked by
// the same name however it was called.
std::string NameBeside(std::string_view iName, std::string_view iSuffix)
{
    constexpr std::string_view toml = ".toml";
    if (iName.size() > toml.size() && iName.ends_with(toml))
        iName.remove_suffix(toml.size());
    return '.' + std::string(iName) + std::string(iSuffix);
}

// Whether the file is there; raises an error when it must not be replaced.
bool LookAtTarget(const std::string& iFile, int iDirectory, const std::string& iName,
                  struct stat& oStatus)
{
    if (fstatat(iDirectory, iName.c_str(), &oStatus, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT)
            return false;
        RaiseSystemFailure(iFile, "look at it", errno);
    }
    RequireSettingsFile(iFile, oStatus);
    if (faccessat(iDirectory, iName.c_str(), W_OK, AT_EACCESS) != 0)
        RaiseSystemFailure(iFile, "write it", errno);
    return true;
}

// The name of the file in its directory; raises an error when it can be none.
std::string FileNameIn(const std::string& iPath, const std::string& iTarget)
{
    std::string name(FileNameOf(iTarget));
    if (name.empty() || name == "." || name == "..")
        RaiseFailure(iPath, "this is not the name of a file");
    return name;
}

} // namespace

LockedSettings::LockedSettings(const std::string& iPath)
    : _File(FollowLinks(iPath)), _Name(FileNameIn(iPath, _File)),
      _Directory(OpenDirectoryOf(_File, _File == iPath)), _LockName(NameBeside(_Name, ".lock")),
      _Temporary(NameBeside(_Name, ".tmp")),
      _Exists(LookAtTarget(_File, Directory(), _Name, _Status)),
      _Lock(_File, Directory(), _LockName, _Exists ? &_Status : nullptr),
      _Old(ReadSettingsFile(_File, Directory(), _Name.c_str(), O_NOFOLLOW))
{
}

std::string LockedSettings::TakeBytes()
{
    return _Old ? std::move(_Old->bytes) : std::string();
}

void LockedSettings::Replace(std::string_view iBytes) const
{
    FileReplacement replacement(_File, Directory(), _Name, _Temporary, _Old ? &*_Old : nullptr);
    replacement.Write(iBytes);
    replacement.Commit();
}
