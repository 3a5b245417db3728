#include "SearchLib.h"

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace
{

const char kVariable[] = "LD_LIBRARY_PATH";

// The path found, freed; nothing for null.
std::optional<std::string> Search(const std::string& iName)
{
    char* const found = SearchLib(iName.c_str());
    if (!found)
        return std::nullopt;
    const std::string path(found);
    std::free(found);
    return path;
}

} // namespace

TEST(SearchLib, FindsAFileAlongTheVariable)
{
    const ScopedDirectory place;
    place.Write("a/other", "");
    place.Write("b/libFoo.so", "");
    place.Write("c/libFoo.so", "");
    const ScopedEnvironment path(kVariable, place / "a:" + (place / "b:") + (place / "c"));
    EXPECT_EQ(Search("libFoo.so"), place / "b/libFoo.so");
}

TEST(SearchLib, TakesTheFileAsNamedFirst)
{
    const ScopedDirectory place;
    place.Write("here/libFoo.so", "");
    place.Write("there/libFoo.so", "");
    const ScopedEnvironment path(kVariable, place / "there");
    const ScopedWorkingDirectory here(place / "here");
    EXPECT_EQ(Search("libFoo.so"), "libFoo.so");
    EXPECT_EQ(Search("../there/libFoo.so"), "../there/libFoo.so");
    EXPECT_EQ(Search(place / "there/libFoo.so"), place / "there/libFoo.so");
}

TEST(SearchLib, SkipsEmptyDirectories)
{
    const ScopedDirectory place;
    place.Write("b/libFoo.so", "");
    const ScopedWorkingDirectory here(place.Path());
    for (const char* list : {"a::b", "::b", ":b:", "b", "b:b", "b::::"}) {
        const ScopedEnvironment path(kVariable, list);
        EXPECT_EQ(Search("libFoo.so"), "b/libFoo.so") << list;
        EXPECT_EQ(Search("libBar.so"), std::nullopt) << list;
    }
}

TEST(SearchLib, AnEmptyDirectoryIsNotTheRoot)
{
    const ScopedDirectory place;
    const ScopedWorkingDirectory here(place.Path());
    const ScopedEnvironment path(kVariable, ":");
    ASSERT_TRUE(std::filesystem::exists("/etc/passwd"));
    EXPECT_EQ(Search("etc/passwd"), std::nullopt);
}

TEST(SearchLib, FindsNothingWithoutTheVariable)
{
    const ScopedDirectory place;
    place.Write("~/libFoo.so", ""); // no home either
    const ScopedWorkingDirectory here(place.Path());
    using Value = std::optional<std::string>;
    for (const Value& value : {Value(), Value(""), Value(":::")}) {
        const ScopedEnvironment path(kVariable, value);
        EXPECT_EQ(Search("libFoo.so"), std::nullopt);
    }
}

TEST(SearchLib, EndsWithTheVariable)
{
    const ScopedDirectory place;
    place.Write("behind/libFoo.so", "");
    const ScopedWorkingDirectory here(place.Path());
    const ScopedEnvironment path(kVariable, std::nullopt);
    static char variable[] = "LD_LIBRARY_PATH=a\0behind";
    ASSERT_EQ(putenv(variable), 0);
    EXPECT_EQ(Search("libFoo.so"), std::nullopt);
}

TEST(SearchLib, TestsExistenceOnly)
{
    const ScopedDirectory place;
    std::filesystem::create_directories(place / "dir/libFoo.so");
    std::filesystem::create_directories(place / "link");
    std::filesystem::create_symlink("nowhere", place / "link/libFoo.so");
    place.Write("file/libFoo.so", "");
    const ScopedEnvironment path(kVariable, place / "link:" + (place / "dir:") + (place / "file"));
    EXPECT_EQ(Search("libFoo.so"), place / "dir/libFoo.so");
}

TEST(SearchLib, TakesAnyName)
{
    const ScopedDirectory place;
    place.Write("a/libsub/Foo.so", "");
    place.Write("b/lib...so", "");
    const ScopedWorkingDirectory here(place.Path());
    const ScopedEnvironment path(kVariable, "a:" + std::string(10000, 'd') + ":b");
    EXPECT_EQ(Search("libsub/Foo.so"), "a/libsub/Foo.so");
    EXPECT_EQ(Search("lib...so"), "b/lib...so");
    EXPECT_EQ(Search(std::string(10000, 'n')), std::nullopt);
    EXPECT_EQ(Search(""), "a/") << "the directory itself";
    EXPECT_EQ(SearchLib(nullptr), nullptr);
}

TEST(SearchLib, LeavesTheVariableAlone)
{
    const ScopedEnvironment path(kVariable, "a::b:c");
    Search("libFoo.so");
    EXPECT_STREQ(std::getenv(kVariable), "a::b:c");
}
