#include "ZORSettingRepository.h"

#include "ChildProcess.h"
#include "CountedAllocations.h"
#include "RepositorySite.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::StartsWith;

// The system calls that stand below stand in for the C library's in this program, and so in the
// platform: one of them can be made to fail, or to be the last thing the process does.
namespace
{

struct Fault {
    int call = 0;          // the number, from 1, of the call that fails; 0: none
    int error = 0;         // what it fails with; 0: the process ends before it
    bool forGood = false;  // all calls of the same kind fail from then on
    int calls = 0;         // made so far
    std::string_view kind; // of the call that failed
    Strings log{};         // what was called, in order
};

Fault theFault;
bool theFaultIsOn = false;

// Whether the call that is about to be made is to fail; sets errno then.
bool FailsNow(std::string_view iKind)
{
    if (!theFaultIsOn)
        return false;
    theFault.log.emplace_back(iKind);
    const bool again = theFault.forGood && theFault.kind == iKind;
    if (++theFault.calls != theFault.call && !again)
        return false;
    if (theFault.error == 0)
        _exit(0);
    theFault.kind = iKind;
    errno = theFault.error;
    return true;
}

class ScopedFault
{
public:
    ScopedFault(int iCall, int iError, bool iForGood)
    {
        theFault = {iCall, iError, iForGood, 0, {}, {}};
        theFaultIsOn = true;
    }
    ~ScopedFault() { theFaultIsOn = false; }
    ScopedFault(const ScopedFault&) = delete;
    ScopedFault& operator=(const ScopedFault&) = delete;

    // The kind of the call that failed, empty when none did.
    std::string Kind() const { return std::string(theFault.kind); }
};

// A clock that ticks this seldom, as that of file systems does on many kernels; 0: the real one.
long theTick = 0; // in nanoseconds

void Coarsen(timespec& ioTime)
{
    if (theTick > 0)
        ioTime.tv_nsec -= ioTime.tv_nsec % theTick;
}

int WithCoarseTimes(long iResult, struct stat& ioStatus)
{
    Coarsen(ioStatus.st_mtim);
    Coarsen(ioStatus.st_ctim);
    return static_cast<int>(iResult);
}

int Result(long iResult)
{
    return static_cast<int>(iResult);
}

} // namespace

extern "C" {

int open(const char* iPath, int iFlags, ...)
{
    va_list more;
    va_start(more, iFlags);
    const unsigned mode = va_arg(more, unsigned);
    va_end(more);
    return FailsNow("open") ? -1 : Result(syscall(SYS_openat, AT_FDCWD, iPath, iFlags, mode));
}

int openat(int iDirectory, const char* iPath, int iFlags, ...)
{
    va_list more;
    va_start(more, iFlags);
    const unsigned mode = va_arg(more, unsigned);
    va_end(more);
    return FailsNow("openat") ? -1 : Result(syscall(SYS_openat, iDirectory, iPath, iFlags, mode));
}

ssize_t read(int iFile, void* oBytes, size_t iSize)
{
    return FailsNow("read") ? -1 : syscall(SYS_read, iFile, oBytes, iSize);
}

ssize_t write(int iFile, const void* iBytes, size_t iSize)
{
    return FailsNow("write") ? -1 : syscall(SYS_write, iFile, iBytes, iSize);
}

ssize_t pwrite(int iFile, const void* iBytes, size_t iSize, off_t iPlace)
{
    return FailsNow("pwrite") ? -1 : syscall(SYS_pwrite64, iFile, iBytes, iSize, iPlace);
}

int close(int iFile)
{
    const bool fails = FailsNow("close"); // and is closed all the same
    const int error = errno;
    const int result = Result(syscall(SYS_close, iFile));
    if (!fails)
        return result;
    errno = error;
    return -1;
}

int fsync(int iFile)
{
    return FailsNow("fsync") ? -1 : Result(syscall(SYS_fsync, iFile));
}

int flock(int iFile, int iOperation) noexcept
{
    return FailsNow("flock") ? -1 : Result(syscall(SYS_flock, iFile, iOperation));
}

int fchmod(int iFile, mode_t iMode) noexcept
{
    return FailsNow("fchmod") ? -1 : Result(syscall(SYS_fchmod, iFile, iMode));
}

int fstat(int iFile, struct stat* oStatus) noexcept
{
    return FailsNow("fstat") ? -1 : WithCoarseTimes(syscall(SYS_fstat, iFile, oStatus), *oStatus);
}

int stat(const char* iPath, struct stat* oStatus) noexcept
{
    return FailsNow("stat")
               ? -1
               : WithCoarseTimes(syscall(SYS_newfstatat, AT_FDCWD, iPath, oStatus, 0), *oStatus);
}

int fstatat(int iDirectory, const char* iPath, struct stat* oStatus, int iFlags) noexcept
{
    return FailsNow("fstatat")
               ? -1
               : Result(syscall(SYS_newfstatat, iDirectory, iPath, oStatus, iFlags));
}

int clock_gettime(clockid_t iClock, timespec* oTime) noexcept
{
    const bool ofFiles = iClock == CLOCK_REALTIME_COARSE && theTick > 0;
    const int result = Result(syscall(SYS_clock_gettime, ofFiles ? CLOCK_REALTIME : iClock, oTime));
    if (ofFiles)
        Coarsen(*oTime);
    return result;
}

int fremovexattr(int iFile, const char* iName) noexcept
{
    return FailsNow("fremovexattr") ? -1 : Result(syscall(SYS_fremovexattr, iFile, iName));
}

int faccessat(int iDirectory, const char* iPath, int iMode, int iFlags) noexcept
{
    return FailsNow("faccessat")
               ? -1
               : Result(syscall(SYS_faccessat2, iDirectory, iPath, iMode, iFlags));
}

ssize_t readlink(const char* iPath, char* oTarget, size_t iSize) noexcept
{
    return FailsNow("readlink") ? -1 : syscall(SYS_readlinkat, AT_FDCWD, iPath, oTarget, iSize);
}

int mkdir(const char* iPath, mode_t iMode) noexcept
{
    return FailsNow("mkdir") ? -1 : Result(syscall(SYS_mkdirat, AT_FDCWD, iPath, iMode));
}

int unlinkat(int iDirectory, const char* iPath, int iFlags) noexcept
{
    return FailsNow("unlinkat") ? -1 : Result(syscall(SYS_unlinkat, iDirectory, iPath, iFlags));
}

int renameat2(int iFrom, const char* iOld, int iTo, const char* iNew, unsigned iFlags) noexcept
{
    return FailsNow("renameat2") ? -1
                                 : Result(syscall(SYS_renameat2, iFrom, iOld, iTo, iNew, iFlags));
}

} // extern "C"

namespace
{

std::size_t OpenDescriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// What one save may do to a file: change it, remove from it, make it, make its directory too.
struct Case {
    const char* name;
    std::string file;
    std::string before; // of the file; "-" when there is none
    std::string after;
    std::function<void(const RepositorySite&, const std::string&)> step;
};

std::vector<Case> Cases()
{
    const auto put = [](const RepositorySite& iSite, const std::string& iFile) {
        iSite.Put("A", "2", iFile);
    };
    const auto remove = [](const RepositorySite& iSite, const std::string& iFile) {
        iSite.Remove("A", iFile);
    };
    return {
        {"put", "site.toml", "A = \"1\"\n", "A = \"2\"\n", put},
        {"remove", "site.toml", "A = \"1\"\nB = 1\n", "B = 1\n", remove},
        {"first put", "site.toml", "-", "A = \"2\"\n", put},
        {"put into a new directory", "new/sub/site.toml", "-", "A = \"2\"\n", put},
    };
}

void Prepare(const Case& iCase, const RepositorySite& iSite)
{
    if (iCase.before != "-")
        iSite.Directory().Write(iCase.file, iCase.before);
}

std::string StateOf(const Case& iCase, const RepositorySite& iSite)
{
    return std::filesystem::exists(iSite / iCase.file) ? iSite.Directory().Read(iCase.file) : "-";
}

bool HasTemporary(const Case& iCase, const RepositorySite& iSite)
{
    return std::filesystem::exists(
        std::filesystem::path(iSite / iCase.file).replace_filename(".site.tmp"));
}

} // namespace

TEST(ZORSettingRepositoryFaults, TellsOfEachCallThatFailsAndLeavesTheFileAsItWas)
{
    for (const Case& each : Cases())
        for (const int error : {EIO, ENOSPC, EACCES, EDQUOT, EMFILE, ENOLCK})
            for (const bool forGood : {false, true}) {
                bool failed = true;
                for (int call = 1; failed; ++call) {
                    const RepositorySite site;
                    Prepare(each, site);
                    const std::size_t descriptors = OpenDescriptors();
                    std::string kind;
                    std::optional<std::string> message;
                    {
                        const ScopedFault fault(call, error, forGood);
                        message = ErrorOf([&] { each.step(site, site / each.file); });
                        kind = fault.Kind();
                        failed = !kind.empty();
                    }
                    SCOPED_TRACE(std::string(each.name) + ", call " + std::to_string(call) + ", " +
                                 kind + ", error " + std::to_string(error) +
                                 (forGood ? " for good" : "") + ": " +
                                 message.value_or("no error"));
                    EXPECT_EQ(OpenDescriptors(), descriptors);
                    if (kind != "unlinkat" || !forGood) {
                        EXPECT_FALSE(HasTemporary(each, site));
                    }
                    if (message) {
                        EXPECT_EQ(StateOf(each, site), each.before);
                        EXPECT_THAT(*message, StartsWith("settings file " + (site / "")));
                        EXPECT_THAT(*message, HasSubstr(std::strerror(error)));
                    } else
                        EXPECT_EQ(StateOf(each, site), each.after);
                }
            }
}

TEST(ZORSettingRepositoryFaults, BringsTheFileToTheDiskBeforeItTakesItsPlace)
{
    for (const Case& each : Cases()) {
        const RepositorySite site;
        Prepare(each, site);
        Strings steps;
        {
            const ScopedFault log(0, 0, false);
            each.step(site, site / each.file);
            steps = theFault.log;
        }
        std::erase_if(steps, [](const std::string& step) {
            return step != "flock" && step != "write" && step != "fsync" && step != "renameat2";
        });
        if (each.file.starts_with("new")) // and the directories above it before
            steps.erase(steps.begin(), steps.begin() + 2);
        EXPECT_THAT(steps,
                    testing::ElementsAre("flock", "write", "fsync", "renameat2", "fsync", "flock"));
    }
}

TEST(ZORSettingRepositoryFaults, GoesOnAfterASignal)
{
    for (const Case& each : Cases()) {
        bool failed = true;
        for (int call = 1; failed; ++call) {
            const RepositorySite site;
            Prepare(each, site);
            const ScopedFault fault(call, EINTR, false);
            const auto message = ErrorOf([&] { each.step(site, site / each.file); });
            const std::string kind = fault.Kind();
            failed = !kind.empty();
            SCOPED_TRACE(std::string(each.name) + ", call " + std::to_string(call));
            // Nothing interrupts the others.
            if (kind == "openat" || kind == "read" || kind == "write" || kind == "fsync" ||
                kind == "flock" || kind == "close" || kind == "pwrite") {
                EXPECT_EQ(message, std::nullopt);
                EXPECT_EQ(StateOf(each, site), each.after);
            }
        }
    }
}

TEST(ZORSettingRepositoryFaults, GivesUpWhenSignalsNeverEnd)
{
    const Case put = Cases()[0];
    bool failed = true;
    for (int call = 1; failed; ++call) {
        const RepositorySite site;
        Prepare(put, site);
        std::optional<std::string> message;
        {
            const ScopedFault fault(call, EINTR, true);
            message = ErrorOf([&] { put.step(site, site / put.file); });
            failed = !fault.Kind().empty();
        }
        EXPECT_EQ(StateOf(put, site), message ? put.before : put.after);
    }
}

TEST(ZORSettingRepositoryFaults, LeavesAWholeFileWhereverTheProcessEnds)
{
    for (const Case& each : Cases()) {
        bool ended = true;
        for (int call = 1; ended; ++call) {
            const RepositorySite site;
            Prepare(each, site);
            ended = InChild([&] {
                        const ScopedFault fault(call, 0, false);
                        each.step(site, site / each.file);
                        return 1;
                    }) == 0;
            SCOPED_TRACE(std::string(each.name) + " ended before call " + std::to_string(call));
            EXPECT_THAT(StateOf(each, site), testing::AnyOf(each.before, each.after));
            site.Put("next", "x", site / each.file);
            EXPECT_EQ(site.Get("next", site / each.file), "x");
            EXPECT_FALSE(HasTemporary(each, site));
        }
    }
}

TEST(ZORSettingRepositoryFaults, LeavesTheFileAsItWasWhenThereIsNoMemory)
{
    for (const Case& each : Cases()) {
        bool done = false;
        for (long pieces = 0; !done; ++pieces) {
            const RepositorySite site;
            Prepare(each, site);
            const std::string file = site / each.file;
            const std::size_t descriptors = OpenDescriptors();
            std::string message;
            try {
                const ScopedMemoryShortage shortage(pieces);
                each.step(site, file);
                done = true;
            } catch (const ZORRaisedError& raised) {
                message = raised.Error().GetMessage(0).ConvertToChar();
            } catch (const std::bad_alloc&) {
                message = "no memory to tell of it";
            }
            SCOPED_TRACE(std::string(each.name) + ", " + std::to_string(pieces) +
                         " pieces: " + message);
            EXPECT_EQ(StateOf(each, site), done ? each.after : each.before);
            EXPECT_FALSE(HasTemporary(each, site));
            EXPECT_EQ(OpenDescriptors(), descriptors);
        }
    }
}

TEST(ZORSettingRepositoryFaults, SeesAChangeOfTheSameLengthWithinOneTickOfTheClock)
{
    const RepositorySite site;
    theTick = 20'000'000;
    for (int i = 0; i < 500; ++i) {
        const std::string value = std::to_string(100 + i);
        site.SetBytes("A = \"" + value + "\"\n");
        ASSERT_EQ(site.Get("A"), value);
    }
    theTick = 0;
}
