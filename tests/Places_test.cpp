// Settings files and catalogs in places where no file can be read or written as usual.

#include "ZORDuxServices.h"

#include "AsNobody.h"
#include "CatalogSite.h"
#include "ChildProcess.h"
#include "RepositorySite.h"
#include "ZORDuxTrace.h"
#include "ZORMsg.h"
#include "ZORMsgCatalog.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;
using testing::UnorderedElementsAre;

namespace
{

// Does something in a child that is given up after ten seconds, as nothing here may wait; with
// checks of its own.
void WithoutWaiting(const std::function<void()>& iDo)
{
    EXPECT_EQ(InChild([&] {
                  alarm(10);
                  iDo();
                  return testing::Test::HasFailure() ? 1 : 0;
              }),
              0);
}

// What may stand in the place of a file, and what a message says of it.
struct Place {
    const char* name;
    std::function<void(const std::string& iPath)> make;
    const char* inSettings; // null: as if there was no file
    const char* inCatalogs;
};

void MakeSparse(const std::string& iPath)
{
    std::ofstream(iPath) << "A = 'x'\n";
    ASSERT_EQ(truncate(iPath.c_str(), 1 << 30), 0);
}

void LinkTo(const char* iTarget, const std::string& iPath)
{
    std::filesystem::create_symlink(iTarget, iPath);
}

const Place kPlaces[] = {
    {"pipe", [](const std::string& path) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); },
     "it is a named pipe, not a file", "it is not a file"},
    {"directory", [](const std::string& path) { std::filesystem::create_directory(path); },
     "it is a directory, not a file", "it is not a file"},
    {"zero", [](const std::string& path) { LinkTo("/dev/zero", path); },
     "it is a device, not a file", "it is not a file"},
    {"full", [](const std::string& path) { LinkTo("/dev/full", path); },
     "it is a device, not a file", "it is not a file"},
    {"large", MakeSparse, "it is larger than 64 MiB", "it is larger than 16 MiB"},
    {"loop", [](const std::string& path) { LinkTo(path.c_str(), path); },
     "Too many levels of symbolic links", "Too many levels of symbolic links"},
    {"dangling", [](const std::string& path) { LinkTo("/nowhere/at/all", path); }, nullptr,
     nullptr},
};

// What stands at a path, without following it.
std::string StateOf(const std::string& iPath)
{
    struct stat status;
    if (lstat(iPath.c_str(), &status) != 0)
        return "nothing";
    return std::to_string(status.st_ino) + ' ' + std::to_string(status.st_mode) + ' ' +
           std::to_string(status.st_size) + ' ' + std::to_string(status.st_mtim.tv_nsec);
}

} // namespace

TEST(Places, GiveAnErrorAndLoseNothingWhenSettingsAreThere)
{
    for (const Place& place : kPlaces) {
        SCOPED_TRACE(place.name);
        const RepositorySite site;
        place.make(site / "site.toml");
        const std::string before = StateOf(site / "site.toml");
        WithoutWaiting([&] {
            ZORDuxServices services;
            const std::pair<const char*, std::function<void()>> steps[] = {
                {"get", [&] { services.GetSetting("A", "site"); }},
                {"list", [&] { services.ListOfSettingVariables("site"); }},
                {"put", [&] { services.PutSetting("A", "y", "site"); }},
                {"remove", [&] { services.RemoveSetting("A", "site"); }}};
            for (const auto& [name, step] : steps) {
                const std::optional<std::string> error = ErrorOf(step);
                if (place.inSettings) {
                    EXPECT_THAT(error, Optional(HasSubstr(place.inSettings))) << name;
                } else if (std::string(name) == "put") {
                    EXPECT_THAT(error, Optional(HasSubstr("cannot open the directory"))) << name;
                } else {
                    EXPECT_EQ(error, std::nullopt) << name;
                }
            }
        });
        EXPECT_EQ(StateOf(site / "site.toml"), before);
        EXPECT_FALSE(std::filesystem::exists(site / ".site.tmp"));
    }
}

TEST(Places, GiveAnErrorWhenACatalogIsThere)
{
    for (const Place& place : kPlaces) {
        SCOPED_TRACE(place.name);
        const CatalogSite site;
        place.make(site.Directory() / "Site.toml");
        WithoutWaiting([&] {
            ZORMsgCatalog catalog("Site");
            EXPECT_THAT(
                ErrorOf([&] { catalog.GetMsg("A"); }),
                Optional(HasSubstr(place.inCatalogs ? place.inCatalogs : "Site: not found")));
        });
    }
}

TEST(Places, GiveAnErrorWhenAFileMayNotBeRead)
{
    const RepositorySite site;
    const CatalogSite catalogs;
    site.SetBytes("A = '1'\n");
    catalogs.Write("Site", "A = '1'\n");
    for (const std::string& file : {site / "site.toml", catalogs.Directory() / "Site.toml"})
        ASSERT_EQ(chmod(file.c_str(), 0), 0);
    for (const auto& directory : {site.Directory().Path(), catalogs.Directory().Path()})
        ASSERT_EQ(chmod(directory.c_str(), 0777), 0); // where one may write
    EXPECT_TRUE(AsNobody([&] {
        EXPECT_THAT(ErrorOf([&] { site.Get("A"); }), Optional(HasSubstr("Permission denied")));
        EXPECT_THAT(ErrorOf([&] { site.Put("A", "2"); }), Optional(HasSubstr("Permission denied")));
        ZORMsgCatalog catalog("Site");
        EXPECT_THAT(ErrorOf([&] { catalog.GetMsg("A"); }),
                    Optional(HasSubstr("Permission denied")));
        return !testing::Test::HasFailure();
    }));
    ASSERT_EQ(chmod((site / "site.toml").c_str(), 0600), 0);
    EXPECT_EQ(site.Bytes(), "A = '1'\n");
}

TEST(Places, LetNobodyPutALinkWhereTheTemporaryFileIsMade)
{
    const RepositorySite site;
    site.SetBytes("A = '1'\n");
    const std::string victim = site.Directory().Write("victim", "untouched");
    const ChildProcess attacker([&] {
        while (true)
            static_cast<void>(symlink("victim", (site / ".site.tmp").c_str()));
        return 0;
    });
    int saved = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::string value = std::to_string(i);
        const std::optional<std::string> error = ErrorOf([&] { site.Put("A", value); });
        if (!error) {
            ++saved;
            ASSERT_EQ(site.Get("A"), value);
        } else {
            ASSERT_THAT(*error, HasSubstr("File exists"));
        }
        ASSERT_FALSE(std::filesystem::is_symlink(site / "site.toml"));
    }
    EXPECT_EQ(site.Directory().Read("victim"), "untouched");
    EXPECT_GT(saved, 0);
}

// A disk of sixteen pages of its own.
namespace
{

constexpr std::size_t kPage = 4096;

// Who may not have them has to be root of a user space of his own for that.
bool HaveMountsOfItsOwn()
{
    const std::string user = std::to_string(geteuid()), group = std::to_string(getegid());
    if (unshare(CLONE_NEWNS) == 0)
        return true;
    if (unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0)
        return false;
    std::ofstream("/proc/self/uid_map") << user + ' ' + user + " 1\n";
    std::ofstream("/proc/self/setgroups") << "deny\n";
    std::ofstream("/proc/self/gid_map") << group + ' ' + group + " 1\n";
    return true;
}

// Mounts it in a child, for its eyes alone, and runs the body there, which is told where it is.
// False when no file system may be mounted.
bool OnASmallDisk(const std::function<void(const std::string& iDisk)>& iBody)
{
    constexpr int kNoMount = 77;
    const ScopedDirectory directory;
    const int status = InChild([&] {
        const std::string disk = directory.Path().string();
        if (!HaveMountsOfItsOwn() ||
            mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", disk.c_str(), "tmpfs", 0, "size=64k,mode=0777") != 0) {
            std::fprintf(stderr, "cannot mount a disk: %s\n", std::strerror(errno));
            return kNoMount;
        }
        alarm(60);
        iBody(disk);
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_THAT(status, AnyOf(0, kNoMount));
    return status != kNoMount;
}

// Takes all of the disk but some pages.
void Fill(const std::string& iDisk, std::size_t iLeft)
{
    const std::string filler = iDisk + "/filler";
    const int file = open(filler.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const std::string page(kPage, 'x');
    off_t size = lseek(file, 0, SEEK_END);
    while (write(file, page.data(), kPage) == static_cast<ssize_t>(kPage))
        size += static_cast<off_t>(kPage);
    ASSERT_EQ(errno, ENOSPC);
    ASSERT_EQ(ftruncate(file, size - static_cast<off_t>(iLeft * kPage)), 0);
    close(file);
}

#define KW_NEEDS_A_DISK(Body)                                                                      \
    if (!OnASmallDisk(Body))                                                                       \
    GTEST_SKIP() << "no file system may be mounted here: a full disk was seen only as errors of "  \
                    "single calls (SystemFaults)"

} // namespace

TEST(FullDisk, KeepsSettingsAsTheyWereAndReadable)
{
    KW_NEEDS_A_DISK([](const std::string& disk) {
        const RepositorySite site(disk);
        const std::string before = "A = \"1\"\nB = \"2\"\n";
        site.SetBytes(before);
        for (const bool locked : {false, true}) {
            Fill(disk, 0);
            EXPECT_THAT(ErrorOf([&] { site.Put("A", "2"); }),
                        Optional(HasSubstr("No space left on device")));
            EXPECT_THAT(ErrorOf([&] { site.Remove("B"); }),
                        Optional(HasSubstr("No space left on device")));
            EXPECT_THAT(ErrorOf([&] { site.Put("A", "2", "new"); }),
                        Optional(HasSubstr("No space left on device")));
            EXPECT_EQ(site.Bytes(), before);
            EXPECT_EQ(site.Get("A"), "1");
            EXPECT_FALSE(std::filesystem::exists(site / ".site.tmp"));
            EXPECT_FALSE(std::filesystem::exists(site / "new.toml"));
            std::filesystem::remove(disk + "/filler");
            if (!locked) { // then its lock has all it needs
                site.Put("A", "1");
            }
        }
        site.Put("A", "2");
        EXPECT_EQ(site.Get("A"), "2");
    });
}

TEST(FullDisk, TakesASaveOnItsLastPage)
{
    KW_NEEDS_A_DISK([](const std::string& disk) {
        const RepositorySite site(disk);
        site.Put("A", "1");
        Fill(disk, 1);
        for (const char* value : {"2", "3", "4"}) {
            site.Put("A", value);
            EXPECT_EQ(site.Get("A"), value);
        }
        EXPECT_THAT(ErrorOf([&] { site.Put("B", std::string(2 * kPage, 'x')); }),
                    Optional(HasSubstr("No space left on device")));
        EXPECT_EQ(site.Bytes(), "A = \"4\"\n");
        site.Remove("A");
        EXPECT_EQ(site.Bytes(), "");
    });
}

TEST(FullDisk, MakesWriteStreamSayNo)
{
    KW_NEEDS_A_DISK([](const std::string& disk) {
        Fill(disk, 0);
        const std::string file = disk + "/f";
        for (const std::size_t size : {10u, 100'000u}) {
            ZORListValZORUnicodeString lines;
            lines.Append(std::string(size, 'x').c_str());
            EXPECT_EQ(ZORDuxServices().WriteStream(lines, file.c_str()), 0);
        }
        EXPECT_EQ(ZORDuxServices().WriteStream({}, file.c_str()), 1);
    });
}

TEST(FullDisk, CostsLinesOfTheTraceReport)
{
    KW_NEEDS_A_DISK([](const std::string& disk) {
        const ScopedEnvironment variable("DUX_TRACE_REPORT", disk + "/report");
        Fill(disk, 1);
        {
            char name[] = "Channel";
            ZORDuxTrace trace(name, nullptr, nullptr, 1);
            for (int i = 0; i < 1000; ++i) {
                trace.FunctionBegin("Function");
                trace.FunctionEnd();
            }
            std::filesystem::remove(disk + "/filler");
        }
        std::ifstream file(disk + "/report");
        Strings lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        ASSERT_GT(lines.size(), 100u);
        EXPECT_EQ(lines.back(), "Total trace number = 1");
    });
}
