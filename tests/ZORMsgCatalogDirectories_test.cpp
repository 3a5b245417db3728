#include "ZORMsgCatalogDirectories.h"

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

TEST(ZORMsgCatalogDirectories, ListsDirectoriesInTheOrderOfTheSearch)
{
    const ScopedEnvironment path("ZOR_CATALOG_PATH", "/first::relative:/second:");
    const std::vector<ZORMsgCatalogDirectory> all = ZORMsgCatalogDirectories();
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0].path, "/first");
    EXPECT_EQ(all[1].path, "relative");
    EXPECT_EQ(all[2].path, "/second");
    EXPECT_THAT(all[3].path, EndsWith("/zor/catalogs"));
    EXPECT_THAT(all[0].names, IsEmpty());
}

TEST(ZORMsgCatalogDirectories, OnlyTheInstalledOneIsThereByDefault)
{
    for (const std::optional<std::string>& value : {std::optional<std::string>(), {""}, {":"}}) {
        const ScopedEnvironment path("ZOR_CATALOG_PATH", value);
        EXPECT_EQ(ZORMsgCatalogDirectories().size(), 1U);
    }
}

TEST(ZORMsgCatalogDirectories, ListsTheCatalogsForAllAndOfEachLocale)
{
    const ScopedDirectory directory;
    const ScopedEnvironment path("ZOR_CATALOG_PATH", directory.Path().string());
    for (const char* name :
         {"Site.toml", "Other.toml", "fr/Site.toml", "fr_CA/Site.toml", "fr/remarks.txt", "remarks",
          "fr/deeper/Lost.toml", ".old/Site.toml", ".toml"})
        directory.Write(name, "");
    std::filesystem::create_directory(directory / "Directory.toml");
    std::filesystem::create_symlink("Site.toml", directory / "Link.toml");
    std::filesystem::create_symlink("nowhere", directory / "Dangling.toml");
    EXPECT_THAT(ZORMsgCatalogDirectories()[0].names,
                ElementsAre("Link", "Other", "Site", "fr/Site", "fr_CA/Site"));
}
