#include "SettingsLock.h"

#include "SettingsFailure.h"
#include "SettingsQueue.h"

#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <sys/sysmacros.h>
#include <thread>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::microseconds kStep(100);
// Who has stepped aside for so many steps tries all the same.
constexpr int kPatience = 100;

// Pids are written in a line of fixed length, so that a shorter one covers a longer.
constexpr int kPidLine = 11;

// Read and write permission for those who may write.
mode_t ModeForWriters(mode_t iMode)
{
    const mode_t writers = iMode & (S_IWUSR | S_IWGRP | S_IWOTH);
    return writers | writers << 1;
}

// The process that has a lock on the open file, by the kernel's list of all locks; 0 when that does
// not tell.
int HolderByKernel(int iFile)
{
    struct stat status;
    std::ifstream locks("/proc/locks");
    if (fstat(iFile, &status) != 0)
        return 0;
    for (std::string line; std::getline(locks, line);) {
        int pid = 0;
        unsigned major = 0, minor = 0;
        unsigned long inode = 0; // NOLINTNEXTLINE(cert-err34-c): the kernel writes numbers that fit
        if (std::sscanf(line.c_str(), "%*d: FLOCK %*s %*s %d %x:%x:%lu", &pid, &major, &minor,
                        &inode) == 4 &&
            makedev(major, minor) == status.st_dev && inode == status.st_ino)
            return pid;
    }
    return 0;
}

} // namespace

SettingsLock::SettingsLock(const std::string& iFile, int iDirectory, const std::string& iName,
                           const struct stat* iTarget)
    : _File(iFile), _Directory(iDirectory), _Name(iName)
{
    // Tried without O_CREAT first: in a directory that anybody may write to, a system may refuse
    // that for a file of somebody else's.
    if (!Open(0) && (errno != ENOENT || !(Make(iTarget) || Open(0) || Open(O_CREAT))))
        RaiseSystemFailure(_File, "open its lock " + _Name, errno);
    LetWritersIn(iTarget);
    Wait();
    WritePid();
}

SettingsLock::~SettingsLock()
{
    // Closing alone would leave the lock with a child that is being forked just now.
    flock(_Lock.Get(), LOCK_UN);
}

bool SettingsLock::Open(int iMore)
{
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    _Lock = UnsharedDescriptor(_Directory, _Name.c_str(), flags | iMore);
    return bool(_Lock);
}

// Makes the lock file without a name, which it gets once all may open it who are to: root's process
// that ends in between leaves no lock that a user cannot open. False when the file system knows no
// such files, or somebody else was faster.
bool SettingsLock::Make(const struct stat* iTarget)
{
    _Lock = UnsharedDescriptor(_Directory, ".", O_TMPFILE | O_RDWR | O_CLOEXEC);
    if (!_Lock)
        return false;
    LetWritersIn(iTarget);
    const std::string self = "/proc/self/fd/" + std::to_string(_Lock.Get());
    return linkat(AT_FDCWD, self.c_str(), _Directory, _Name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// A lock file that root made for a user's file, or a user for a file of the group's, must not keep
// the others out. Only its owner can see to that. For anybody else it was good enough: it is open.
void SettingsLock::LetWritersIn(const struct stat* iTarget)
{
    struct stat lock;
    if (fstat(_Lock.Get(), &lock) != 0)
        RaiseSystemFailure(_File, "look at its lock " + _Name, errno);
    if (!S_ISREG(lock.st_mode))
        RaiseFailure(_File, "its lock " + _Name + " is not a regular file");
    const uid_t self = geteuid();
    if (!iTarget || (lock.st_uid != self && self != 0))
        return;
    bool done = true;
    if (lock.st_uid != iTarget->st_uid || lock.st_gid != iTarget->st_gid)
        done = fchown(_Lock.Get(), iTarget->st_uid, iTarget->st_gid) == 0 ||
               fchown(_Lock.Get(), lock.st_uid, iTarget->st_gid) == 0;
    if (done && (lock.st_mode & 0777) != ModeForWriters(iTarget->st_mode))
        static_cast<void>(fchmod(_Lock.Get(), ModeForWriters(iTarget->st_mode)));
}

void SettingsLock::Wait()
{
    const Clock::time_point end = Clock::now() + SettingsQueue::kLongestWait;
    SettingsQueue queue(_Directory, _Name);
    for (int step = 1; !TryToLock(queue.MustStepAside() && step % kPatience != 0); ++step) {
        if (Clock::now() >= end)
            RaiseFailure(_File, "cannot lock it by " + _Name + ": " + Holder() +
                                    " has held the lock for 10 seconds");
        queue.Join();
        std::this_thread::sleep_for(kStep);
    }
}

bool SettingsLock::TryToLock(bool iStepAside)
{
    if (iStepAside)
        return false;
    if (Uninterrupted([&] { return flock(_Lock.Get(), LOCK_EX | LOCK_NB); }) == 0)
        return true;
    if (errno != EWOULDBLOCK)
        RaiseSystemFailure(_File, "lock it by " + _Name, errno);
    return false;
}

void SettingsLock::WritePid()
{
    char line[kPidLine + 1];
    std::snprintf(line, sizeof line, "%-10d\n", static_cast<int>(getpid()));
    for (off_t done = 0; done < kPidLine;) {
        const std::size_t left = static_cast<std::size_t>(kPidLine - done);
        const ssize_t written =
            Uninterrupted([&] { return pwrite(_Lock.Get(), line + done, left, done); });
        if (written <= 0)
            RaiseSystemFailure(_File, "write to its lock " + _Name, written < 0 ? errno : ENOSPC);
        done += written;
    }
}

// The kernel's list of locks tells at any time, but not in every container and for every file
// system; the pid in the file may be of the holder before, for a moment.
std::string SettingsLock::Holder() const
{
    char line[kPidLine + 1] = {};
    int pid = HolderByKernel(_Lock.Get());
    if (pid <= 0 &&
        (pread(_Lock.Get(), line, kPidLine, 0) <= 0 || std::sscanf(line, "%d", &pid) != 1))
        return "another process";
    return "process " + std::to_string(pid);
}
