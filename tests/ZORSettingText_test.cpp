#include "ZORSettingText.h"

#include "RepositorySite.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;

TEST(ZORSettingText, IsTheBytesOfTheFileAndItsPath)
{
    const RepositorySite site;
    site.SetBytes("# note\r\nA = 'x'\n");
    const ZORSettingText text("site");
    EXPECT_EQ(text.GetFile(), site / "site.toml");
    EXPECT_EQ(text.GetBytes(), "# note\r\nA = 'x'\n");
}

TEST(ZORSettingText, ReplacesTheFileByTheBytesAsTheyAre)
{
    const RepositorySite site;
    site.SetBytes("A = 1\n");
    ZORSettingText text("site");
    EXPECT_TRUE(text.Replace("# why\nB   =   'x' # that\r\n"));
    EXPECT_EQ(site.Bytes(), "# why\nB   =   'x' # that\r\n");
    EXPECT_EQ(text.GetBytes(), site.Bytes());
    EXPECT_EQ(site.Get("B"), "x");
    EXPECT_TRUE(text.Replace(""));
    EXPECT_EQ(site.Bytes(), "");
}

TEST(ZORSettingText, MakesAMissingFileAndItsDirectory)
{
    const RepositorySite site;
    const ScopedEnvironment path("ZOR_SETTINGS_PATH", site / "new");
    ZORSettingText text("site");
    EXPECT_EQ(text.GetBytes(), "");
    EXPECT_TRUE(text.Replace("A = 1\n"));
    EXPECT_EQ(site.Directory().Read("new/site.toml"), "A = 1\n");
}

TEST(ZORSettingText, MendsADamagedFile)
{
    const RepositorySite site;
    site.SetBytes("A = \n\xFF");
    ZORSettingText text("site");
    EXPECT_EQ(text.GetBytes(), "A = \n\xFF");
    EXPECT_TRUE(text.Replace("A = 1\n"));
    EXPECT_EQ(site.Bytes(), "A = 1\n");
}

TEST(ZORSettingText, RefusesADamagedTextWithLineAndColumn)
{
    const RepositorySite site;
    site.SetBytes("A = 1\n");
    ZORSettingText text("site");
    const std::string longName(200, 'n');
    for (const std::string damaged : {"A = 1\nB = \n", "A = 1\n\xFF", "A = 1\nA = 2\n"}) {
        EXPECT_THAT(ErrorOf([&] { text.Check(damaged); }).value_or(""),
                    HasSubstr("site.toml: line 2, column "));
        EXPECT_THAT(ErrorOf([&] { text.Replace(damaged); }).value_or(""),
                    HasSubstr("site.toml: line 2, column "));
    }
    EXPECT_THAT(ErrorOf([&] { text.Check(longName + " = 1\n"); }).value_or(""),
                HasSubstr("line 1, column 1"));
    EXPECT_EQ(ErrorOf([&] { text.Check("A = 2\n"); }), std::nullopt);
    EXPECT_EQ(site.Bytes(), "A = 1\n");
}

TEST(ZORSettingText, LeavesAFileThatSomebodyElseChangedMeanwhile)
{
    const RepositorySite site;
    site.SetBytes("A = 1\n");
    ZORSettingText text("site");
    site.Put("B", "theirs");
    EXPECT_FALSE(text.Replace("A = 2\n"));
    EXPECT_EQ(site.Get("B"), "theirs");
    EXPECT_EQ(site.Get("A"), "1");
    ZORSettingText missing("other");
    site.Put("B", "theirs", "other");
    EXPECT_FALSE(missing.Replace("A = 2\n"));
    std::filesystem::remove(site / "site.toml");
    EXPECT_FALSE(text.Replace("A = 2\n"));
    EXPECT_FALSE(std::filesystem::exists(site / "site.toml"));
}

TEST(ZORSettingText, LeavesAFileWhoseBytesDoNotChange)
{
    const RepositorySite site;
    site.SetBytes("A = 1\n");
    struct stat before, after;
    ASSERT_EQ(stat((site / "site.toml").c_str(), &before), 0);
    ZORSettingText text("site");
    EXPECT_TRUE(text.Replace("A = 1\n"));
    ASSERT_EQ(stat((site / "site.toml").c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST(ZORSettingText, WaitsForTheLockOfOtherWriters)
{
    const RepositorySite site;
    site.SetBytes("A = 1\n");
    ZORSettingText text("site");
    const int lock = open((site / ".site.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    bool replaced = true;
    std::thread writer([&] { replaced = text.Replace("A = 2\n"); });
    // What the holder writes before it lets go is seen, and kept.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    site.SetBytes("A = \"theirs\"\n");
    flock(lock, LOCK_UN);
    writer.join();
    close(lock);
    EXPECT_FALSE(replaced);
    EXPECT_EQ(site.Bytes(), "A = \"theirs\"\n");
}

TEST(ZORSettingText, KeepsTheModeAndFollowsLinks)
{
    const RepositorySite site;
    site.Directory().Write("real/there.toml", "A = 1\n");
    ASSERT_EQ(chmod((site / "real/there.toml").c_str(), 0640), 0);
    std::filesystem::create_symlink("real/there.toml", site / "site.toml");
    ZORSettingText text("site");
    EXPECT_TRUE(text.Replace("A = 2\n"));
    EXPECT_TRUE(std::filesystem::is_symlink(site / "site.toml"));
    EXPECT_EQ(site.Directory().Read("real/there.toml"), "A = 2\n");
    struct stat status;
    ASSERT_EQ(stat((site / "real/there.toml").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
    EXPECT_FALSE(std::filesystem::exists(site / "real/.there.tmp"));
}

TEST(ZORSettingText, RaisesAnErrorWhereNoFileCanBe)
{
    const RepositorySite site;
    std::filesystem::create_directory(site / "site.toml");
    EXPECT_THAT(ErrorOf([] { ZORSettingText text("site"); }).value_or(""),
                EndsWith("it is a directory, not a file"));
    EXPECT_THAT(ErrorOf([] { ZORSettingText text(nullptr); }).value_or(""),
                EndsWith("a settings file needs a name"));
    const ScopedEnvironment path("ZOR_SETTINGS_PATH", std::nullopt);
    const ScopedEnvironment configuration("XDG_CONFIG_HOME", std::nullopt);
    const ScopedEnvironment home("HOME", std::nullopt);
    EXPECT_THAT(ErrorOf([] { ZORSettingText text("site"); }).value_or(""),
                HasSubstr("there is no directory to keep it in"));
}
