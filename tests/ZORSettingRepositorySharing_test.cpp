#include "ZORSettingRepository.h"

#include "AsNobody.h"
#include "ChildProcess.h"
#include "RepositorySite.h"

#include <atomic>
#include <fcntl.h>
#include <list>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <thread>

using testing::HasSubstr;
using testing::Optional;
using testing::UnorderedElementsAre;

namespace
{

// What is in a directory, names of hidden files included.
Strings EntriesOf(const std::string& iDirectory)
{
    Strings names;
    for (const auto& each : std::filesystem::directory_iterator(iDirectory))
        names.push_back(each.path().filename());
    return names;
}

struct stat StatusOf(const std::string& iPath)
{
    struct stat status {
    };
    EXPECT_EQ(stat(iPath.c_str(), &status), 0) << iPath;
    return status;
}

mode_t ModeOf(const std::string& iPath)
{
    return StatusOf(iPath).st_mode & 07777;
}

void PutMany(const RepositorySite& iSite, const std::string& iPrefix, int iCount,
             const std::string& iFile = "site")
{
    for (int i = 0; i < iCount; ++i)
        iSite.Put(iPrefix + std::to_string(i), iPrefix, iFile);
}

// Whether a step fails with an error that has this text in it; tells what it did otherwise.
bool Fails(const std::string& iText, const std::function<void()>& iStep)
{
    const std::optional<std::string> error = ErrorOf(iStep);
    if (error && error->find(iText) != std::string::npos)
        return true;
    std::fprintf(stderr, "expected: %s\nbut it was: %s\n", iText.c_str(),
                 error.value_or("no error").c_str());
    return false;
}

// A site that belongs to the user without rights.
class SiteOfNobody : public RepositorySite
{
public:
    SiteOfNobody() { Give("."); }

    void Give(const std::string& iName) const
    {
        if (geteuid() == 0) {
            ASSERT_EQ(chown((*this / iName).c_str(), kNobody, kNobody), 0);
        }
    }
};

bool IsLocked(const std::string& iLock)
{
    const int lock = open(iLock.c_str(), O_RDWR | O_CLOEXEC);
    const bool locked = lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) != 0;
    close(lock);
    return locked;
}

} // namespace

TEST(ZORSettingRepositorySharing, LosesNoneOfWhatEightProcessesPut)
{
    const RepositorySite site;
    constexpr int processes = 8, puts = 500;
    std::list<ChildProcess> children;
    for (int i = 0; i < processes; ++i)
        children.emplace_back([&, i] {
            PutMany(site, "P" + std::to_string(i) + "_", puts);
            return 0;
        });
    for (ChildProcess& each : children)
        EXPECT_EQ(each.Wait(), 0);
    Strings names = site.List();
    EXPECT_EQ(names.size(), static_cast<std::size_t>(processes * puts));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::unique(names.begin(), names.end()), names.end());
    EXPECT_EQ(site.Get("P7_499"), "P7_");
}

TEST(ZORSettingRepositorySharing, LosesNoneOfWhatThreadsPut)
{
    const RepositorySite site;
    constexpr int threads = 4, puts = 50;
    std::vector<std::thread> all;
    for (int i = 0; i < threads; ++i)
        all.emplace_back([&, i] { PutMany(site, "T" + std::to_string(i) + "_", puts); });
    for (std::thread& each : all)
        each.join();
    EXPECT_EQ(site.List().size(), static_cast<std::size_t>(threads * puts));
}

TEST(ZORSettingRepositorySharing, KeepsTheFirstWritesOfTwoIntoAMissingDirectory)
{
    const RepositorySite site;
    for (int round = 0; round < 30; ++round) {
        const std::string file = site / ("new" + std::to_string(round) + "/sub/site.toml");
        std::list<ChildProcess> children;
        for (const char* name : {"A", "B"})
            children.emplace_back([&, name] {
                site.Put(name, "x", file);
                return 0;
            });
        for (ChildProcess& each : children)
            EXPECT_EQ(each.Wait(), 0);
        EXPECT_THAT(site.List(file), UnorderedElementsAre("A", "B"));
    }
    EXPECT_EQ(ModeOf(site / "new0"), 0700u);
    EXPECT_EQ(ModeOf(site / "new0/sub"), 0700u);
}

TEST(ZORSettingRepositorySharing, LeavesAWholeFileWhenAWriterIsKilled)
{
    const RepositorySite site;
    const std::string big(20000, 'x');
    site.Put("A", big);
    std::mt19937 random(1);
    for (int round = 0; round < 100; ++round) {
        ChildProcess writer([&] {
            for (int i = 0;; ++i)
                site.Put("A", big + std::to_string(i));
            return 0;
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 5000));
        writer.Send(SIGKILL);
        ASSERT_EQ(writer.Wait(), -SIGKILL);
        ASSERT_TRUE(site.Get("A").starts_with(big));
        site.Put("B", std::to_string(round));
        ASSERT_THAT(EntriesOf(site / ""), UnorderedElementsAre("site.toml", ".site.lock"));
    }
}

TEST(ZORSettingRepositorySharing, NeverShowsAReaderHalfAFile)
{
    const RepositorySite site;
    site.Put("A", std::string(50000, 'a'));
    ChildProcess writer([&] {
        for (char each = 'a';; each = each == 'z' ? 'a' : static_cast<char>(each + 1))
            site.Put("A", std::string(50000, each));
        return 0;
    });
    for (int i = 0; i < 500; ++i) {
        const std::string value = site.Get("A");
        ASSERT_EQ(value, std::string(50000, value[0]));
    }
}

TEST(ZORSettingRepositorySharing, TellsWhoHoldsTheLockForTooLong)
{
    const RepositorySite site;
    site.Put("A", "x");
    const ChildProcess holder([&] {
        for (int i = 0;; ++i)
            site.Put("A", std::to_string(i));
        return 0;
    });
    do {
        holder.Send(SIGCONT);
        std::this_thread::sleep_for(std::chrono::microseconds(700));
        holder.Send(SIGSTOP);
        int status;
        waitpid(holder.Pid(), &status, WUNTRACED);
    } while (!IsLocked(site / ".site.lock"));
    // As if it had not come to writing its own pid.
    site.Directory().Write(".site.lock", "1         \n");
    const std::string before = site.Bytes();
    EXPECT_THAT(ErrorOf([&] { site.Put("B", "x"); }),
                Optional(AllOf(HasSubstr("process " + std::to_string(holder.Pid())),
                               HasSubstr(".site.lock"), HasSubstr(site / "site.toml"))));
    EXPECT_EQ(site.Bytes(), before);
    holder.Send(SIGKILL);
    site.Put("B", "x");
    EXPECT_EQ(site.Get("B"), "x");
}

TEST(ZORSettingRepositorySharing, ServesThoseWhoWaitInTheOrderTheyCame)
{
    const Strings inOrder = {"A", "1", "2", "3", "4", "5"};
    int rounds = 0;
    for (int round = 0; round < 6; ++round) { // on a busy machine now and then one comes late
        const RepositorySite site;
        site.Put("A", "x");
        const int lock = open((site / ".site.lock").c_str(), O_RDWR | O_CLOEXEC);
        ASSERT_EQ(flock(lock, LOCK_EX), 0);
        std::list<ChildProcess> children;
        for (std::size_t i = 1; i < inOrder.size(); ++i) {
            children.emplace_back([&, i] {
                close(lock);
                site.Put(inOrder[i], "x");
                return 0;
            });
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
        }
        flock(lock, LOCK_UN);
        close(lock);
        for (ChildProcess& each : children)
            EXPECT_EQ(each.Wait(), 0);
        rounds += site.List() == inOrder;
    }
    EXPECT_GE(rounds, 3);
}

TEST(ZORSettingRepositorySharing, KeepsTheLockFromAForkedChild)
{
    const RepositorySite site;
    std::atomic<bool> done = false;
    std::thread writer([&] {
        while (!done)
            site.Put("A", "x");
    });
    std::list<ChildProcess> children;
    for (int i = 0; i < 20; ++i)
        children.emplace_back([] {
            pause();
            return 0;
        });
    done = true;
    writer.join();
    site.Put("B", "y"); // would wait for a child that has the lock
    EXPECT_EQ(site.Get("B"), "y");
}

TEST(ZORSettingRepositorySharing, LosesTheLockOfADeadProcessWhoseChildrenLive)
{
    const RepositorySite site;
    site.Put("A", "x");
    ChildProcess parent([&] {
        setpgid(0, 0);
        std::thread writer([&] {
            while (true)
                site.Put("A", std::string(10'000'000, 'x'));
        });
        while (!IsLocked(site / ".site.lock"))
            ;
        if (fork() == 0) { // in the middle of a save
            alarm(60);
            pause();
        }
        return kill(getpid(), SIGKILL);
    });
    const pid_t group = parent.Pid();
    EXPECT_EQ(parent.Wait(), -SIGKILL);
    site.Put("B", "y"); // would wait for the child
    EXPECT_EQ(site.Get("B"), "y");
    kill(-group, SIGKILL);
}

TEST(ZORSettingRepositorySharing, GoesOnInParentAndChildAfterAFork)
{
    const RepositorySite site;
    site.Put("A", "1");
    const auto settings = OpenSettings("site");
    EXPECT_EQ(site.Get("A"), "1");
    EXPECT_EQ(InChild([&] {
                  if (Read(*settings, "A").second != "1")
                      return 1;
                  site.Put("A", "2");
                  Write(*settings, "B", {"B", "x"});
                  settings->SaveRepository();
                  return site.Get("A") == "2" ? 0 : 2;
              }),
              0);
    EXPECT_EQ(site.Get("A"), "2");
    site.Put("C", "y");
    EXPECT_THAT(site.List(), testing::ElementsAre("A", "B", "C"));
}

TEST(ZORSettingRepositorySharing, ForksWhileOtherThreadsRead)
{
    const RepositorySite site;
    site.Put("A", "x");
    std::atomic<bool> done = false;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i)
        readers.emplace_back([&] {
            while (!done)
                static_cast<void>(site.Get("A"));
        });
    for (int i = 0; i < 30; ++i)
        EXPECT_EQ(InChild([&] { return site.Get("A") == "x" ? 0 : 1; }), 0);
    done = true;
    for (std::thread& each : readers)
        each.join();
}

TEST(ZORSettingRepositorySharing, IsReadByManyThreadsWhileItChanges)
{
    const RepositorySite site;
    site.Put("A", "0");
    std::atomic<bool> done = false;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 8; ++i)
        readers.emplace_back([&] {
            int last = 0;
            while (!done) {
                const int now = std::stoi(site.Get("A"));
                wrong += now < last;
                last = now;
            }
        });
    for (int i = 1; i <= 100; ++i)
        site.Put("A", std::to_string(i));
    done = true;
    for (std::thread& each : readers)
        each.join();
    EXPECT_EQ(wrong, 0);
}

TEST(ZORSettingRepositorySharing, RefusesWhatIsNoFileAtOnce)
{
    const RepositorySite site;
    ASSERT_EQ(mkfifo((site / "pipe.toml").c_str(), 0600), 0);
    std::filesystem::create_directory(site / "directory.toml");
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (site / "socket.toml").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(listener);
    const std::pair<std::string, const char*> rows[] = {{"pipe", "a named pipe"},
                                                        {"directory", "a directory"},
                                                        {"socket", "a socket"},
                                                        {"/dev/null", "a device"},
                                                        {"/dev/zero", "a device"}};
    for (const auto& each : rows)
        EXPECT_THAT(ErrorOf([&] { site.Get("A", each.first); }), Optional(HasSubstr(each.second)))
            << each.first;

    // The same for a file that becomes one before it is saved.
    const auto settings = OpenSettings("late");
    Write(*settings, "A", {"A", "x"});
    ASSERT_EQ(mkfifo((site / "late.toml").c_str(), 0600), 0);
    EXPECT_THAT(ErrorOf([&] { settings->SaveRepository(); }), Optional(HasSubstr("a named pipe")));
}

TEST(ZORSettingRepositorySharing, FollowsChainsOfLinks)
{
    const RepositorySite site;
    const ScopedDirectory elsewhere;
    elsewhere.Write("real/target.toml", "A = '1'\n");
    std::filesystem::create_symlink("real/target.toml", elsewhere / "relative");
    std::filesystem::create_symlink(elsewhere / "relative", elsewhere / "absolute");
    std::filesystem::create_symlink(elsewhere / "absolute", site / "site.toml");
    EXPECT_EQ(site.Get("A"), "1");
    site.Put("A", "2");
    EXPECT_EQ(elsewhere.Read("real/target.toml"), "A = '2'\n");
    EXPECT_EQ(site.Get("A"), "2");
    EXPECT_TRUE(std::filesystem::is_symlink(site / "site.toml"));
    EXPECT_TRUE(std::filesystem::is_symlink(elsewhere / "relative"));
    EXPECT_THAT(EntriesOf(site / ""), UnorderedElementsAre("site.toml"));
    EXPECT_THAT(EntriesOf(elsewhere / "real"), UnorderedElementsAre("target.toml", ".target.lock"));
}

TEST(ZORSettingRepositorySharing, WritesWhereADanglingLinkLeads)
{
    const RepositorySite site;
    const ScopedDirectory elsewhere;
    std::filesystem::create_symlink(elsewhere / "target", site / "site.toml");
    EXPECT_EQ(site.Get("A"), "-");
    site.Put("A", "x");
    EXPECT_EQ(elsewhere.Read("target"), "A = \"x\"\n");

    std::filesystem::create_symlink(elsewhere / "missing/target", site / "far.toml");
    EXPECT_THAT(ErrorOf([&] { site.Put("A", "x", "far"); }),
                Optional(HasSubstr("open the directory")));
    EXPECT_FALSE(std::filesystem::exists(elsewhere / "missing"));

    std::filesystem::create_symlink("loop.toml", site / "loop.toml");
    EXPECT_THAT(ErrorOf([&] { site.Get("A", "loop"); }), Optional(HasSubstr("loop.toml: cannot")));
}

TEST(ZORSettingRepositorySharing, LocksOneFileHoweverItIsCalled)
{
    const RepositorySite site;
    site.Put("first", "x");
    std::filesystem::create_directory(site / "sub");
    std::filesystem::create_symlink("../site.toml", site / "sub/link.toml");
    std::list<ChildProcess> children;
    for (const std::string& name : {std::string("site"), site / "site.toml", site / "sub/link.toml",
                                    site / "sub/../site.toml"})
        children.emplace_back([&, name] {
            PutMany(site, name, 100, name);
            return 0;
        });
    for (ChildProcess& each : children)
        EXPECT_EQ(each.Wait(), 0);
    EXPECT_EQ(site.List().size(), 401u);
}

TEST(ZORSettingRepositorySharing, WritesThroughNothingThatStandsInThePlaceOfItsFiles)
{
    const RepositorySite site;
    site.SetBytes("A = '1'\n");
    site.Directory().Write("victim", "untouched");
    std::filesystem::create_symlink("victim", site / ".site.tmp");
    site.Put("A", "2");
    EXPECT_EQ(site.Bytes(), "A = '2'\n");
    EXPECT_EQ(site.Directory().Read("victim"), "untouched");

    std::filesystem::create_directories(site / ".site.tmp/sub");
    EXPECT_THAT(ErrorOf([&] { site.Put("A", "3"); }), Optional(HasSubstr(".site.tmp")));
    EXPECT_EQ(site.Bytes(), "A = '2'\n");
    std::filesystem::remove_all(site / ".site.tmp");

    std::filesystem::remove(site / ".site.lock");
    std::filesystem::create_symlink("victim", site / ".site.lock");
    EXPECT_THAT(ErrorOf([&] { site.Put("A", "3"); }), Optional(HasSubstr(".site.lock")));
    std::filesystem::remove(site / ".site.lock");
    ASSERT_EQ(mkfifo((site / ".site.lock").c_str(), 0600), 0);
    EXPECT_THAT(ErrorOf([&] { site.Put("A", "3"); }), Optional(HasSubstr(".site.lock")));
    EXPECT_EQ(site.Bytes(), "A = '2'\n");
    EXPECT_EQ(site.Directory().Read("victim"), "untouched");
}

TEST(ZORSettingRepositorySharing, KeepsModeOwnerAndGroup)
{
    const RepositorySite site;
    site.SetBytes("A = '1'\n");
    for (const mode_t mode : {0600u, 0640u, 0644u, 0660u, 0666u, 0700u, 0400u}) {
        if (geteuid() == 0) {
            ASSERT_EQ(chown((site / "site.toml").c_str(), kNobody, 1), 0);
        }
        ASSERT_EQ(chmod((site / "site.toml").c_str(), mode), 0);
        const struct stat before = StatusOf(site / "site.toml");
        if (geteuid() != 0 && (mode & 0200) == 0)
            continue;
        site.Put("A", std::to_string(mode));
        const struct stat after = StatusOf(site / "site.toml");
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
        EXPECT_NE(after.st_ino, before.st_ino);
    }
}

TEST(ZORSettingRepositorySharing, MakesANewFileAsTheUserWantsFilesMade)
{
    const RepositorySite site;
    const mode_t before = umask(027);
    site.Put("A", "x");
    umask(before);
    EXPECT_EQ(ModeOf(site / "site.toml"), 0640u);
}

TEST(ZORSettingRepositorySharing, LetsThoseLockWhoMayWrite)
{
    const SiteOfNobody site;
    site.SetBytes("A = '1'\n");
    site.Give("site.toml");
    ASSERT_EQ(chmod((site / "site.toml").c_str(), 0644), 0);
    site.Put("A", "2"); // as root, when that is who runs this
    EXPECT_EQ(ModeOf(site / ".site.lock"), 0600u);
    EXPECT_TRUE(AsNobody([&] {
        site.Put("A", "3");
        return true;
    }));
    EXPECT_EQ(site.Get("A"), "3");
    ASSERT_EQ(chmod((site / "site.toml").c_str(), 0664), 0);
    site.Put("A", "4");
    EXPECT_EQ(ModeOf(site / ".site.lock"), 0660u);
}

TEST(ZORSettingRepositorySharing, KeepsAttributesAndAccessLists)
{
    const RepositorySite site("/tmp");
    site.SetBytes("A = '1'\n");
    const std::string path = site / "site.toml";
    const std::string note = "a note of another program";
    if (setxattr(path.c_str(), "user.note", note.data(), note.size(), 0) != 0)
        GTEST_SKIP() << "this file system has no attributes";
    // user::rw-, user:65534:rw-, group::r--, mask::rw-, other::---
    const unsigned char list[] = {2,    0,    0,    0,    1,    0,    6,    0,    0xFF, 0xFF, 0xFF,
                                  0xFF, 2,    0,    6,    0,    0xFE, 0xFF, 0,    0,    4,    0,
                                  4,    0,    0xFF, 0xFF, 0xFF, 0xFF, 16,   0,    6,    0,    0xFF,
                                  0xFF, 0xFF, 0xFF, 32,   0,    0,    0,    0xFF, 0xFF, 0xFF, 0xFF};
    const bool lists = setxattr(path.c_str(), "system.posix_acl_access", list, sizeof list, 0) == 0;
    site.Put("A", "2");
    char value[100];
    EXPECT_EQ(std::string(value, static_cast<std::size_t>(std::max<ssize_t>(
                                     getxattr(path.c_str(), "user.note", value, sizeof value), 0))),
              note);
    if (lists) {
        EXPECT_EQ(getxattr(path.c_str(), "system.posix_acl_access", value, sizeof value),
                  static_cast<ssize_t>(sizeof list));
        EXPECT_EQ(ModeOf(path), 0660u);
    }
}

TEST(ZORSettingRepositorySharing, LeavesAFileAloneThatTheCallerMayNotWrite)
{
    const SiteOfNobody site;
    site.SetBytes("A = '1'\n");
    ASSERT_EQ(chmod((site / "site.toml").c_str(), 0444), 0);
    EXPECT_TRUE(AsNobody([&] {
        return site.Get("A") == "1" &&
               Fails("cannot write it: Permission denied", [&] { site.Put("A", "2"); });
    }));
    EXPECT_EQ(site.Bytes(), "A = '1'\n");
    EXPECT_THAT(EntriesOf(site / ""), UnorderedElementsAre("site.toml"));
    ASSERT_EQ(chmod((site / "site.toml").c_str(), 0), 0);
    EXPECT_TRUE(AsNobody(
        [&] { return Fails("cannot open it: Permission denied", [&] { site.Get("A"); }); }));
}

TEST(ZORSettingRepositorySharing, NeverWidensThePermissionsOfAFileOfSomebodyElse)
{
    if (geteuid() != 0)
        FAIL() << "only root can make a file of somebody else";
    const SiteOfNobody site;
    const std::pair<mode_t, mode_t> rows[] = {
        {0666, 0666}, {0676, 0666}, {0606, 0606}, {06676, 0666}};
    for (const auto& [before, after] : rows) {
        site.SetBytes("A = '1'\n");
        ASSERT_EQ(chown((site / "site.toml").c_str(), 0, 1), 0);
        ASSERT_EQ(chmod((site / "site.toml").c_str(), before), 0);
        EXPECT_TRUE(AsNobody([&] {
            site.Put("A", "2");
            return true;
        }));
        EXPECT_EQ(site.Get("A"), "2");
        EXPECT_EQ(ModeOf(site / "site.toml"), after);
        EXPECT_EQ(StatusOf(site / "site.toml").st_gid, kNobody);
        std::filesystem::remove(site / "site.toml");
    }
}

TEST(ZORSettingRepositorySharing, FailsInADirectoryThatCannotBeWrittenTo)
{
    const SiteOfNobody site;
    site.SetBytes("A = '1'\n");
    site.Give("site.toml");
    for (const mode_t mode : {0500u, 0100u, 0300u, 0000u}) {
        ASSERT_EQ(chmod((site / "").c_str(), mode), 0);
        EXPECT_TRUE(AsNobody([&] {
            return Fails("Permission denied", [&] { site.Put("A", "2"); });
        })) << mode;
        EXPECT_TRUE((mode & 0200) != 0 || AsNobody([&] {
                        return Fails("Permission denied",
                                     [&] { site.Put("A", "2", site / "new/file"); });
                    }))
            << mode;
    }
    ASSERT_EQ(chmod((site / "").c_str(), 0700), 0);
    EXPECT_EQ(site.Bytes(), "A = '1'\n");
}

TEST(ZORSettingRepositorySharing, FailsWhenTheDiskTakesNoMore)
{
    const RepositorySite site;
    site.SetBytes("A = '1'\n");
    EXPECT_EQ(InChild([&] {
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{1000, 1000};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  return Fails("write to the temporary file .site.tmp: File too large",
                               [&] { site.Put("A", std::string(2000, 'x')); })
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_EQ(site.Bytes(), "A = '1'\n");
    EXPECT_THAT(EntriesOf(site / ""), UnorderedElementsAre("site.toml", ".site.lock"));
}
