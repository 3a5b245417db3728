#include "FileReplacement.h"

#include "FileAttributes.h"
#include "SettingsFailure.h"

#include <cstdio>
#include <fcntl.h>

FileReplacement::FileReplacement(const std::string& iFile, int iDirectory, const std::string& iName,
                                 const std::string& iTemporary, const SettingsFile* iOld)
    : _File(iFile), _Directory(iDirectory), _Name(iName), _Temporary(iTemporary), _Old(iOld),
      _New(Create())
{
    if (!_New && errno == EEXIST && RemoveTemporary())
        _New = Descriptor(Create());
    if (!_New)
        Fail("make the temporary file " + _Temporary, errno);
    _HasTemporary = true;
}

FileReplacement::~FileReplacement()
{
    if (_HasTemporary)
        RemoveTemporary();
}

// Exclusively, so that nobody can put a link there and have it written through. A file that
// replaces another is nobody else's until it has that one's permissions.
int FileReplacement::Create() const
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    return Uninterrupted(
        [&] { return openat(_Directory, _Temporary.c_str(), flags, _Old ? 0600 : 0666); });
}

void FileReplacement::Write(std::string_view iBytes)
{
    if (_Old)
        CopyFileAttributes(_File, _Old->descriptor.Get(), _Old->status, _New.Get());
    while (!iBytes.empty()) {
        const ssize_t written =
            Uninterrupted([&] { return write(_New.Get(), iBytes.data(), iBytes.size()); });
        if (written <= 0)
            Fail("write to the temporary file " + _Temporary, written < 0 ? errno : ENOSPC);
        iBytes.remove_prefix(static_cast<std::size_t>(written));
    }
    if (Uninterrupted([&] { return fsync(_New.Get()); }) != 0)
        Fail("sync the temporary file " + _Temporary, errno);
    if (!_New.Close())
        Fail("close the temporary file " + _Temporary, errno);
}

void FileReplacement::Commit()
{
    const bool exchanged = TakePlace();
    if (!SyncDirectory(_Directory)) {
        const int error = errno;
        GiveBack(exchanged);
        Fail("sync its directory", error);
    }
    if (exchanged && !RemoveTemporary()) {
        const int error = errno;
        GiveBack(exchanged);
        Fail("remove the old file", error);
    }
}

// Tells whether the old file now has the temporary name.
bool FileReplacement::TakePlace()
{
    const auto rename = [&](unsigned iFlags) {
        return Uninterrupted([&] {
                   return renameat2(_Directory, _Temporary.c_str(), _Directory, _Name.c_str(),
                                    iFlags);
               }) == 0;
    };
    if (_Old && rename(RENAME_EXCHANGE))
        return true;
    const bool unknown = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
    if ((_Old && !unknown) || !rename(0))
        Fail("rename the temporary file " + _Temporary, errno);
    _HasTemporary = false;
    return false;
}

void FileReplacement::GiveBack(bool iExchanged)
{
    if (iExchanged)
        renameat2(_Directory, _Temporary.c_str(), _Directory, _Name.c_str(), RENAME_EXCHANGE);
    else if (!_Old)
        unlinkat(_Directory, _Name.c_str(), 0);
}

bool FileReplacement::RemoveTemporary()
{
    _HasTemporary = Uninterrupted([&] { return unlinkat(_Directory, _Temporary.c_str(), 0); }) != 0;
    return !_HasTemporary || errno == ENOENT;
}

void FileReplacement::Fail(const std::string& iStep, int iError) const
{
    RaiseSystemFailure(_File, iStep, iError);
}
