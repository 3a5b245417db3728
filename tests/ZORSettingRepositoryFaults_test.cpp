#include "ZORSettingRepository.h"

#include "CountedAllocations.h"
#include "RepositorySite.h"
#include "WatchedChild.h"

#include <cstdint>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>
#include <utility>

// The clock and the times of files that stand below stand in for the C library's in this program,
// and so in the platform.
namespace
{

// A clock that ticks this seldom, as that of file systems does on many kernels; 0: the real one.
long theTick = 0; // in nanoseconds

// What happens to a file right after somebody has looked how large it is.
std::function<void()> theChange;

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

} // namespace

extern "C" {

int fstat(int iFile, struct stat* oStatus) noexcept
{
    const long result = syscall(SYS_fstat, iFile, oStatus);
    if (theChange && S_ISREG(oStatus->st_mode))
        std::exchange(theChange, nullptr)();
    return WithCoarseTimes(result, *oStatus);
}

int stat(const char* iPath, struct stat* oStatus) noexcept
{
    return WithCoarseTimes(syscall(SYS_newfstatat, AT_FDCWD, iPath, oStatus, 0), *oStatus);
}

int clock_gettime(clockid_t iClock, timespec* oTime) noexcept
{
    const bool ofFiles = iClock == CLOCK_REALTIME_COARSE && theTick > 0;
    const auto result =
        static_cast<int>(syscall(SYS_clock_gettime, ofFiles ? CLOCK_REALTIME : iClock, oTime));
    if (ofFiles)
        Coarsen(*oTime);
    return result;
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

TEST(ZORSettingRepositoryFaults, BringsTheFileToTheDiskBeforeItTakesItsPlace)
{
    for (const Case& each : Cases()) {
        const RepositorySite site;
        Prepare(each, site);
        Strings steps = InWatchedChild({}, [&] {
                            Watched([&] { each.step(site, site / each.file); });
                            return std::string();
                        }).calls;
        std::erase_if(steps, [](const std::string& step) {
            return step != "flock" && step != "write" && step != "fsync" &&
                   !step.starts_with("rename");
        });
        if (each.file.starts_with("new")) // and the directories above it before
            steps.erase(steps.begin(), steps.begin() + 2);
        EXPECT_THAT(steps, testing::ElementsAre("flock", "write", "fsync",
                                                testing::StartsWith("rename"), "fsync", "flock"));
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

TEST(ZORSettingRepositoryFaults, ReadsAFileThatGrowsMeanwhile)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\n");
    for (const std::string more :
         {"B = \"2\"\n", "# a remark that is longer than all the rest\n"}) {
        const std::string grown = site.Bytes() + more;
        theChange = [&] { site.SetBytes(grown); };
        EXPECT_EQ(site.Get("A"), "1");
        EXPECT_FALSE(theChange);
        EXPECT_EQ(site.Get("B"), "2");
        site.Put("A", "1");
        EXPECT_EQ(site.Bytes(), grown);
    }
}

// Before all of it is in memory, which it has no room in.
TEST(ZORSettingRepositoryFaults, RefusesAFileThatGrowsTooLargeMeanwhile)
{
    const RepositorySite site;
    site.SetBytes("A = \"1\"\n");
    theChange = [&] { std::filesystem::resize_file(site / "site.toml", std::uintmax_t{1} << 40); };
    EXPECT_THAT(ErrorOf([&] { site.Get("A"); }),
                testing::Optional(testing::HasSubstr("it is larger than 64 MiB")));
}
