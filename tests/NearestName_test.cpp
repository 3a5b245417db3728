#include "NearestName.h"

#include <gtest/gtest.h>

namespace
{

const std::vector<std::string> kNames = {"settings", "status", "search", "split", "id", "ids"};

} // namespace

TEST(NearestName, ForgivesLettersLeftOutPutInChangedAndSwapped)
{
    const struct {
        const char* typed;
        const char* meant;
    } rows[] = {
        {"sttings", "settings"},  {"setttings", "settings"}, {"setyings", "settings"},
        {"esttings", "settings"}, {"stetnigs", "settings"},  {"serch", "search"},
        {"Status", "status"},     {"stauts", "status"},      {"di", "id"},
        {"settings", "settings"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(NearestName(row.typed, kNames), row.meant) << row.typed;
}

TEST(NearestName, IsEmptyWhenNoneIsNear)
{
    for (const std::string typed : {"", "x", "help", "frobnicate", "spilled"})
        EXPECT_EQ(NearestName(typed, kNames), "") << typed;
    EXPECT_EQ(NearestName(std::string(40, 's'), {std::string(40, 's')}), "");
    EXPECT_EQ(NearestName("id", {}), "");
}

TEST(NearestName, IsElseTheOnlyOneThatBeginsSo)
{
    EXPECT_EQ(NearestName("set", kNames), "settings");
    EXPECT_EQ(NearestName("sta", kNames), "status");
    EXPECT_EQ(NearestName("se", kNames), "");
    EXPECT_EQ(NearestName("", {"id"}), "");
}

TEST(NearestName, IsTheFirstOfThoseThatAreEquallyNear)
{
    EXPECT_EQ(NearestName("idx", kNames), "id");
    EXPECT_EQ(NearestName("idx", {"ids", "id"}), "ids");
}
