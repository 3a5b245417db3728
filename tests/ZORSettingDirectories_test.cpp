#include "ZORSettingDirectories.h"

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <sys/stat.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ZORSettingDirectories, AreListedInTheOrderOfTheSearchWithTheirFiles)
{
    const ScopedDirectory root;
    root.Write("one/b.toml", "");
    root.Write("one/a.toml", "not even sound");
    root.Write("one/two words.toml", "");
    root.Write("one/.b.lock", "");
    root.Write("one/.b.tmp", "");
    root.Write("one/notes.txt", "");
    root.Write("elsewhere", "");
    std::filesystem::create_directory(root / "one/directory.toml");
    std::filesystem::create_symlink("../elsewhere", root / "one/link.toml");
    std::filesystem::create_symlink("nowhere", root / "one/dangling.toml");
    ASSERT_EQ(mkfifo((root / "one/pipe.toml").c_str(), 0600), 0);
    root.Write("two/a.toml", "");
    const ScopedEnvironment path("ZOR_SETTINGS_PATH", ":" + (root / "none") + ":" + (root / "one") +
                                                          "::" + (root / "two"));
    const std::vector<ZORSettingDirectory> all = ZORSettingDirectories();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].path, root / "none");
    EXPECT_THAT(all[0].names, IsEmpty());
    EXPECT_EQ(all[1].path, root / "one");
    EXPECT_THAT(all[1].names, ElementsAre("a", "b", "link", "two words"));
    EXPECT_EQ(all[2].path, root / "two");
    EXPECT_THAT(all[2].names, ElementsAre("a"));
}

TEST(ZORSettingDirectories, AreTheUsersOwnWhenNoneAreNamed)
{
    const ScopedEnvironment path("ZOR_SETTINGS_PATH", std::nullopt);
    const ScopedEnvironment home("HOME", "/home/ann");
    {
        const ScopedEnvironment configuration("XDG_CONFIG_HOME", "/etc/a:b");
        const std::vector<ZORSettingDirectory> all = ZORSettingDirectories();
        ASSERT_EQ(all.size(), 1u);
        EXPECT_EQ(all[0].path, "/etc/a:b/zor");
    }
    const ScopedEnvironment configuration("XDG_CONFIG_HOME", std::nullopt);
    const std::vector<ZORSettingDirectory> all = ZORSettingDirectories();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].path, "/home/ann/.config/zor");
    const ScopedEnvironment noHome("HOME", std::nullopt);
    EXPECT_THAT(ZORSettingDirectories(), IsEmpty());
}
