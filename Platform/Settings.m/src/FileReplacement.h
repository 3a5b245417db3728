#pragma once

#include "SettingsFile.h"

#include <string>
#include <string_view>

// Replaces a file by a new one as a whole: at any instant, and after any power cut, the old or the
// new file is there. Whoever else does this to the same file is locked out meanwhile.
//
// The new file takes the old one's place by an exchange of both names, so that the old one can be
// put back should the directory not take the change to the disk. Where a file system knows no
// exchange, that single failure leaves the new file in place.
//
// Every operation raises an error that names the file and the step when that fails.
class FileReplacement
{
public:
    // Makes the temporary file `iTemporary` in the open directory; what stands there is removed.
    // `iOld` is the file `iName` as it was read, null when there is none. `iFile` is what messages
    // call it. The arguments have to outlive this object.
    FileReplacement(const std::string& iFile, int iDirectory, const std::string& iName,
                    const std::string& iTemporary, const SettingsFile* iOld);
    // Removes the temporary file, unless it took its place.
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    // Writes the bytes to the disk, in a file with the old one's owner, mode and attributes.
    void Write(std::string_view iBytes);
    // Puts the new file in its place; to be called once.
    void Commit();

private:
    int Create() const;
    bool TakePlace();
    void GiveBack(bool iExchanged);
    bool RemoveTemporary();
    [[noreturn]] void Fail(const std::string& iStep, int iError) const;

    const std::string& _File;
    const int _Directory;
    const std::string& _Name;
    const std::string& _Temporary;
    const SettingsFile* const _Old;
    Descriptor _New;
    bool _HasTemporary = true;
};
