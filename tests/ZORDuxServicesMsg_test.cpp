#include "ZORDuxServicesMsg.h"

#include "CatalogSite.h"
#include "RaisedBy.h"
#include "ZORMsgCatalogDifferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <sys/stat.h>
#include <vector>

namespace
{

// The texts of the three failures for a user of that language.
std::vector<std::string> Texts(const char* iLanguage)
{
    const ScopedEnvironment language("LANG", iLanguage);
    std::vector<std::string> texts;
    for (const unsigned id : {0x20002U, 0x20003U, 0x20004U}) {
        ZORDuxServicesMsg error(id);
        error.SetParameters(2, "libone", "two");
        texts.emplace_back(error.GetMessage(0).ConvertToChar());
    }
    return texts;
}

const auto english =
    testing::ElementsAre("The component libone does not offer the interface two.",
                         "The schema library libone was not found or cannot be loaded.",
                         "The schema library libone does not define the creation function two.");

std::string Text(unsigned iId)
{
    ZORDuxServicesMsg error(iId);
    error.SetParameters(2, "one", "two");
    return error.GetMessage(0).ConvertToChar();
}

} // namespace

TEST(ZORDuxServicesMsg, HasEnglishTextsBuiltIn)
{
    const CatalogSite site;
    EXPECT_THAT(Texts("fr"), english);
}

TEST(ZORDuxServicesMsg, HasTextsInTheInstalledCatalogs)
{
    const CatalogSite site;
    const ScopedEnvironment installed("ZOR_CATALOG_PATH", INSTALLED_CATALOGS);
    EXPECT_THAT(Texts("en_GB.UTF-8"), english);
    EXPECT_THAT(Texts("de"), english);
    EXPECT_THAT(
        Texts("fr_FR.UTF-8"),
        testing::ElementsAre(
            "Le composant libone n'offre pas l'interface two.",
            "La bibliothèque de schéma libone est introuvable ou ne peut pas être chargée.",
            "La bibliothèque de schéma libone ne définit pas la fonction de création two."));
    EXPECT_THAT(ZORMsgCatalogDifferences("ZORDuxServicesMsg"), testing::IsEmpty());
}

TEST(ZORDuxServicesMsg, ASiteMayHaveTextsOfItsOwn)
{
    const CatalogSite site;
    site.Write("ZORDuxServicesMsg", "20002 = '{2} of {1}, {3}'\n[20003]\nShort = 'short'\n");
    EXPECT_EQ(Text(0x20002), "two of one, {3}");
    EXPECT_EQ(Text(0x20003), "short");
    EXPECT_EQ(Text(0x20004), "The schema library one does not define the creation function two.");
}

TEST(ZORDuxServicesMsg, ACatalogGivesNoTextToWhatHasNone)
{
    const CatalogSite site;
    site.Write("ZORDuxServicesMsg", "20002 = 'text'\n20005 = 'unknown'\n0 = 'none'\n");
    EXPECT_EQ(Text(0x20005), "ZORDuxServicesMsg never raised");
    ZORDuxServicesMsg own(0x20002);
    own.SetText("its own");
    EXPECT_EQ(own.GetMessage(0), "its own");
}

TEST(ZORDuxServicesMsg, AFailingLookUpFallsBackInSilence)
{
    const char* const builtIn = "The component one does not offer the interface two.";
    const CatalogSite site;
    const std::string file = site.Write("ZORDuxServicesMsg", "20002 = \n");
    EXPECT_EQ(Text(0x20002), builtIn);
    site.Write("ZORDuxServicesMsg", "20002 = 1\n");
    EXPECT_EQ(Text(0x20002), builtIn);
    std::filesystem::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(Text(0x20002), builtIn);
}
