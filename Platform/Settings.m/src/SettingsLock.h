#pragma once

#include "UnsharedDescriptor.h"

#include <string>
#include <sys/stat.h>

// The right to replace a settings file, held by one at a time: a kernel lock (flock) on a file of
// its own beside it, which holds the pid of its last holder. The kernel drops the lock with the
// process, however that ends; a child that was forked during a save does not share it.
//
// The lock file stays for ever. Were it deleted, one process could wait for the lock of the deleted
// file while another made and locked a new one, and both would hold "the" lock.
class SettingsLock
{
public:
    // Waits for the lock, 10 seconds at most; then, or when something fails, raises an error that
    // names the file `iFile` and, for a lock that is held, the holder's pid. `iTarget` is the
    // status of the file, null when it is not there: who may write the file may lock it.
    SettingsLock(const std::string& iFile, int iDirectory, const std::string& iName,
                 const struct stat* iTarget);
    ~SettingsLock();
    SettingsLock(const SettingsLock&) = delete;
    SettingsLock& operator=(const SettingsLock&) = delete;

private:
    bool Open(int iMore);
    bool Make(const struct stat* iTarget);
    void LetWritersIn(const struct stat* iTarget);
    void Wait();
    bool TryToLock(bool iStepAside);
    void WritePid();
    std::string Holder() const;

    const std::string& _File;
    const int _Directory;
    const std::string& _Name;
    UnsharedDescriptor _Lock;
};
