#include "ZORMsgCatalogDifferences.h"

#include "CatalogSite.h"
#include "RaisedBy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(ZORMsgCatalogDifferences, FindsNoneWhereAllLocalesAgree)
{
    const CatalogSite site;
    site.Write("Site", "[A]\nShort = '{1} {2}'\nLong = 'long'\n");
    site.Write("fr/Site", "A.Long = 'lang'\nA.Short = '{2} {1} {2}'\n");
    EXPECT_THAT(ZORMsgCatalogDifferences("Site"), IsEmpty());
}

TEST(ZORMsgCatalogDifferences, TellsMissingKeysAndPlaces)
{
    const CatalogSite site;
    site.Write("Site", "B = '{1} {2}'\nA = 'a'\nE = '{{1}'\n");
    site.Write("fr/Site", "B = '{1}'\nC = 'c'\nA = '{1}'\nE = 'e'\n");
    site.Write("de/Site", "A = 'a'\nB = '{2} {3} {12}'\nC = 1\nD = 'd'\nE = 'e'\n");
    EXPECT_THAT(ZORMsgCatalogDifferences("Site"),
                ElementsAre("A has no place {1} in default", "A has no place {1} in de",
                            "B has no place {3} in default", "B has no place {12} in default",
                            "B has no place {1} in de", "B has no place {2} in fr",
                            "B has no place {3} in fr", "B has no place {12} in fr",
                            "C is missing in default", "C is not a text in de",
                            "D is missing in default", "D is missing in fr"));
}

TEST(ZORMsgCatalogDifferences, TextsForAllAreNoLocaleWhereThereAreNone)
{
    const CatalogSite site;
    site.Write("en/Site", "A = 'a'\nB = 'b'\n");
    site.Write("fr/Site", "A = 'a'\n");
    EXPECT_THAT(ZORMsgCatalogDifferences("Site"), ElementsAre("B is missing in fr"));
}

TEST(ZORMsgCatalogDifferences, ATerritoryNeedNotRepeatItsLanguage)
{
    const CatalogSite site;
    site.Write("Site", "A = 'a'\nB = '{1}'\n");
    site.Write("fr/Site", "A = 'a'\nB = '{1}'\n");
    site.Write("fr_CA.UTF-8/Site", "B = 'b'\n");
    site.Write("fr@euro/Site", "B = '{1}'\n");
    site.Write("fr.UTF-8/Site", "B = '{1}'\n");
    site.Write("de_AT/Site", "A = 'a'\n");
    EXPECT_THAT(ZORMsgCatalogDifferences("Site"),
                ElementsAre("B is missing in de_AT", "B has no place {1} in fr_CA.UTF-8"));
}

TEST(ZORMsgCatalogDifferences, ADirectoryThatNoLocaleHasIsLeftOut)
{
    const CatalogSite site;
    site.Write("Site", "A = 'a'\n");
    site.Write(".old/Site", "A = '{1}'\nB = 'b'\n");
    EXPECT_THAT(ZORMsgCatalogDifferences("Site"), IsEmpty());
}

TEST(ZORMsgCatalogDifferences, TakesDirectoriesTogetherEarlierOnesFirst)
{
    const CatalogSite first;
    const CatalogSite second;
    const ScopedEnvironment path("ZOR_CATALOG_PATH", first.Directory().Path().string() + ":" +
                                                         second.Directory().Path().string());
    first.Write("fr/Site", "A = '{1}'\n");
    second.Write("Site", "A = '{1}'\nB = 'b'\n");
    second.Write("fr/Site", "A = 'shadowed'\nB = 'b'\n");
    EXPECT_THAT(ZORMsgCatalogDifferences("Site"), IsEmpty());
}

TEST(ZORMsgCatalogDifferences, DoesNotDependOnTheUsersLocale)
{
    const CatalogSite site;
    const ScopedEnvironment language("LANG", "de");
    site.Write("Site", "A = 'a'\n");
    site.Write("fr/Site", "");
    EXPECT_THAT(ZORMsgCatalogDifferences("Site"), ElementsAre("A is missing in fr"));
}

TEST(ZORMsgCatalogDifferences, RaisesWhatKeepsItFromComparing)
{
    const CatalogSite site;
    const auto failure = [](const char* name) {
        return std::string(
            RaisedBy([&] { ZORMsgCatalogDifferences(name); })->GetMessage(0).ConvertToChar());
    };
    EXPECT_EQ(failure("Nobody"), "message catalog Nobody: not found");
    site.Write("", "A = 'a'\n");
    EXPECT_EQ(failure(""), "message catalog : not found");
    site.Write("Site", "A = 'a'\n");
    const std::string damaged = site.Write("fr/Site", "A\n");
    EXPECT_EQ(failure("fr/Site"), "message catalog fr/Site: not found");
    EXPECT_EQ(failure("../fr/Site"), "message catalog ../fr/Site: not found");
    EXPECT_THAT(failure("Site"), HasSubstr(damaged + ": line 1"));
    std::filesystem::remove(damaged);
    ASSERT_EQ(mkfifo(damaged.c_str(), 0600), 0);
    EXPECT_EQ(failure("Site"), "message catalog " + damaged + ": it is not a file");
}
