#include "ZORSettingOrigin.h"

#include "RepositorySite.h"

using testing::HasSubstr;

namespace
{

// "FILE:LINE:COLUMN" without the site's directory, or "-" when there is no such setting.
std::string Origin(const RepositorySite& iSite, const std::string& iFile, const std::string& iName)
{
    const auto origin = ZORFindSettingOrigin(iFile.c_str(), iName.c_str());
    if (!origin)
        return "-";
    const std::string root = iSite / "";
    EXPECT_EQ(origin->file.substr(0, root.size()), root);
    return origin->file.substr(root.size()) + ":" + std::to_string(origin->line) + ":" +
           std::to_string(origin->column);
}

} // namespace

TEST(ZORSettingOrigin, IsTheLineOfTheAttribute)
{
    const RepositorySite site;
    site.SetBytes("\xEF\xBB\xBF# comment\r\n\r\n  FIRST = \"\"\"\n\nx\"\"\"\n"
                  "LIST = [\n  \"OTHER\",\n  \"value\" ]\n\"d\xC3\xA9j\xC3\xA0\" = 1\n"
                  "[table]\nINSIDE = 1\n");
    EXPECT_EQ(Origin(site, "site", "FIRST"), "site.toml:3:3");
    EXPECT_EQ(Origin(site, "site", "LIST"), "site.toml:6:1");
    EXPECT_EQ(Origin(site, "site", "d\xC3\xA9j\xC3\xA0"), "site.toml:9:1");
}

TEST(ZORSettingOrigin, IsNothingForWhatIsNoAttribute)
{
    const RepositorySite site;
    site.SetBytes("LIST = [\"OTHER\", \"value\"]\ndotted.name = 1\n[table]\nINSIDE = 1\n");
    for (const char* name : {"OTHER", "dotted", "dotted.name", "table", "INSIDE", "list", ""})
        EXPECT_EQ(Origin(site, "site", name), "-") << name;
    EXPECT_EQ(Origin(site, "missing", "LIST"), "-");
}

TEST(ZORSettingOrigin, IsInTheFirstDirectoryThatHasTheFile)
{
    const RepositorySite site;
    site.Directory().Write("one/other.toml", "A = 1\n");
    site.Directory().Write("two/site.toml", "\nA = 1\n");
    site.Directory().Write("three/site.toml", "A = 1\nB = 2\n");
    const ScopedEnvironment path("ZOR_SETTINGS_PATH",
                                 (site / "one") + ":" + (site / "two") + ":" + (site / "three"));
    EXPECT_EQ(Origin(site, "site", "A"), "two/site.toml:2:1");
    EXPECT_EQ(Origin(site, "site", "B"), "-");
    EXPECT_EQ(Origin(site, site / "three/site.toml", "B"), "three/site.toml:2:1");
}

TEST(ZORSettingOrigin, FollowsTheFileAsItChanges)
{
    const RepositorySite site;
    site.SetBytes("A = 1\n");
    EXPECT_EQ(Origin(site, "site", "A"), "site.toml:1:1");
    site.SetBytes("B = 1\n A = 1\n");
    EXPECT_EQ(Origin(site, "site", "A"), "site.toml:2:2");
}

TEST(ZORSettingOrigin, RaisesAnErrorForADamagedFileAndForNoName)
{
    const RepositorySite site;
    site.SetBytes("A = \n");
    EXPECT_THAT(ErrorOf([] { ZORFindSettingOrigin("site", "A"); }).value_or(""),
                HasSubstr("site.toml: line 1, column "));
    EXPECT_THAT(ErrorOf([] { ZORFindSettingOrigin("", "A"); }).value_or(""),
                HasSubstr("needs a name"));
    EXPECT_THAT(ErrorOf([] { ZORFindSettingOrigin(nullptr, "A"); }).value_or(""),
                HasSubstr("needs a name"));
    EXPECT_THAT(ErrorOf([] { ZORFindSettingOrigin("site", nullptr); }).value_or(""),
                HasSubstr("needs a name"));
}
