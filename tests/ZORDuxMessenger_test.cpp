#include "ZORDuxMessenger.h"

#include "CatalogSite.h"
#include "CountedAllocations.h"
#include "RaisedBy.h"
#include "ZORMsgCatalogDifferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

std::string Short(ZORDuxMessenger& ioMessenger)
{
    ZORUnicodeString text = "as it was";
    ioMessenger.GetShortMsg(text);
    return text.ConvertToChar();
}

std::string Long(ZORDuxMessenger& ioMessenger)
{
    ZORUnicodeString text = "as it was";
    ioMessenger.GetLongMsg(text);
    return text.ConvertToChar();
}

// A message of the family CDA that shows parameters 1 to 5.
class ZORDuxMessengerTest : public testing::Test
{
protected:
    ZORDuxMessengerTest()
    {
        site.Write("ZORDUXCdaErrorMsg", "[CDA_W_0001]\n"
                                        "Short = 'one {1}'\n"
                                        "Long = 'all {1} {2} {3} {4} {5}'\n"
                                        "[CDA_E_0002]\n"
                                        "Short = 'short'\n");
    }

    CatalogSite site;
    ZORDuxMessenger messenger;
};

} // namespace

TEST_F(ZORDuxMessengerTest, MakesTheTextsOfATagAndParameters)
{
    messenger.Set("CDA_W_0001");
    messenger.Add("plate");
    messenger.Add(3);
    EXPECT_EQ(messenger.Ier(), 2);
    EXPECT_EQ(Short(messenger), "one plate");
    EXPECT_EQ(Long(messenger), "all plate 3 {3} {4} {5}");
    EXPECT_EQ(messenger.Ier(), 2);
}

TEST_F(ZORDuxMessengerTest, BeginsEmpty)
{
    EXPECT_EQ(messenger.Ier(), 0);
    EXPECT_EQ(Short(messenger), "DUX ERROR");
    EXPECT_EQ(Long(messenger), "Cannot find a valid message file for tag : ");
    EXPECT_EQ(messenger.Ier(), -1);
}

TEST_F(ZORDuxMessengerTest, FindsTheCatalogByTheFamilyOfTheTag)
{
    const std::pair<const char*, const char*> families[] = {{"CDA", "ZORDUXCdaErrorMsg"},
                                                            {"PS_", "ZORDUXPS_ErrorMsg"},
                                                            {"CFG", "ZORDUXCfgErrorMsg"},
                                                            {"PNO", "ZORDUXPnoErrorMsg"}};
    for (const auto& [family, catalog] : families) {
        const std::string name = catalog;
        site.Write(name, std::string(family) + "_I_7.Short = '" + name + "'\n" + family +
                             "_I_7.Long = 'long'\n" + family + ".Short = 'short tag'\n" + family +
                             ".Long = ''\n");
        messenger.Set((std::string(family) + "_I_7").c_str());
        EXPECT_EQ(Short(messenger), name);
        EXPECT_EQ(Long(messenger), "long");
        messenger.Set(family);
        EXPECT_EQ(Short(messenger), "short tag");
        EXPECT_EQ(Long(messenger), "");
    }
}

TEST_F(ZORDuxMessengerTest, ATagOfNoFamilyHasFixedTexts)
{
    for (const char* tag :
         {"XYZ_E_1", "", "CD", "CD_W_1", "cda_W_1", " CDA_W_1", "PNX", "\u00c9DA_W_1"}) {
        messenger.Set(tag);
        EXPECT_EQ(Short(messenger), "DUX ERROR") << tag;
        EXPECT_EQ(Long(messenger),
                  std::string("Cannot find a valid message file for tag : ") + tag);
        EXPECT_EQ(messenger.Ier(), -1) << tag;
    }
}

TEST_F(ZORDuxMessengerTest, ClassifiesATagByTheMarkerBehindItsFamily)
{
    const std::pair<const char*, int> rows[] = {
        {"CDA_W_0001", 2},
        {"CDA_I_0001", 1},
        {"CDA_E_0001", -1},
        {"CDA_w_0001", -1},
        {"CDA_W_", 2},
        {"CDA_I_", 1},
        {"CDA_W", -1},
        {"CDA_", -1},
        {"CDA", -1},
        {"CD", -1},
        {"", -1},
        {"PS__W_1", 2},
        {"PS_W_1", -1},
        {"XYZ_W_1", 2},
        {"XYZ_I_1", 1},
        {"CDAX_W_1", -1},
        {"\u00e9\u00e9\u00e9_W_1", 2},
    };
    for (const auto& [tag, expected] : rows) {
        messenger.Set(tag);
        EXPECT_EQ(messenger.Ier(), expected) << tag;
    }
}

TEST_F(ZORDuxMessengerTest, EachTextTakesTheFirstParametersItNeeds)
{
    site.Write("ZORDUXCdaErrorMsg", "[CDA_W_0001]\nShort = '{2}'\nLong = '{1} and {3}, {1}'\n");
    messenger.Set("CDA_W_0001");
    for (const char* parameter : {"a", "b", "c", "d"})
        messenger.Add(parameter);
    EXPECT_EQ(Short(messenger), "b");
    EXPECT_EQ(Long(messenger), "a and c, a");
}

TEST_F(ZORDuxMessengerTest, NeverExpandsAParameter)
{
    messenger.Set("CDA_W_0001");
    messenger.Add("{2}");
    messenger.Add("{1}");
    EXPECT_EQ(Long(messenger), "all {2} {1} {3} {4} {5}");
}

TEST_F(ZORDuxMessengerTest, WritesWholeNumbersAsPrintfDoes)
{
    const std::pair<int, const char*> rows[] = {
        {0, "0"},
        {3, "3"},
        {-42, "-42"},
        {999999, "999999"},
        {1000000, "1e+06"},
        {1234567, "1.23457e+06"},
        {-1234567, "-1.23457e+06"},
        {INT_MAX, "2.14748e+09"},
        {INT_MIN, "-2.14748e+09"},
    };
    for (const auto& [number, text] : rows) {
        messenger.Set("CDA_W_0001");
        messenger.Add(number);
        EXPECT_EQ(Short(messenger), std::string("one ") + text);
        char expected[64];
        std::snprintf(expected, sizeof expected, "one %g", static_cast<double>(number));
        EXPECT_EQ(Short(messenger), expected);
    }
}

TEST_F(ZORDuxMessengerTest, AddingAFractionAddsNothing)
{
    messenger.Set("CDA_W_0001");
    const CountedAllocations counted;
    for (const double number :
         {2.5, 0.0, -1.0, 1e300, -1e300, 2147483647.0, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()})
        messenger.Add(number);
    EXPECT_EQ(counted.Count(), 0);
    messenger.Add("plate");
    messenger.Add(2.5);
    messenger.Add(3);
    EXPECT_EQ(Long(messenger), "all plate 3 {3} {4} {5}");
}

TEST_F(ZORDuxMessengerTest, LoadsTextsOnce)
{
    messenger.Set("CDA_W_0001");
    messenger.Add("plate");
    EXPECT_EQ(Short(messenger), "one plate");
    site.Write("ZORDUXCdaErrorMsg", "changed =");
    messenger.Add("late");
    EXPECT_EQ(Short(messenger), "one plate");
    EXPECT_EQ(Long(messenger), "all plate {2} {3} {4} {5}");
}

TEST_F(ZORDuxMessengerTest, SettingATagBeginsAnew)
{
    messenger.Set("CDA_W_0001");
    messenger.Add("old");
    EXPECT_EQ(Short(messenger), "one old");
    messenger.Set("CDA_W_0001");
    messenger.Add("new");
    EXPECT_EQ(Short(messenger), "one new");
}

TEST_F(ZORDuxMessengerTest, TakesTwoTextsAsTheyAre)
{
    messenger.Set("{1} short", "long");
    EXPECT_EQ(messenger.Ier(), -1);
    EXPECT_EQ(Short(messenger), "{1} short");
    EXPECT_EQ(Long(messenger), "long");
}

TEST_F(ZORDuxMessengerTest, TwoTextsOpenNoCatalogThoughThereIsATag)
{
    messenger.Set("CDA_W_0001");
    messenger.Add("plate");
    std::filesystem::remove(site.Directory() / "ZORDUXCdaErrorMsg.toml");
    messenger.Set("short", "long");
    messenger.LoadMessage();
    EXPECT_EQ(Short(messenger), "short");
    EXPECT_EQ(messenger.Ier(), -1);
}

TEST_F(ZORDuxMessengerTest, ResetForgetsAll)
{
    messenger.Set("CDA_W_0001");
    messenger.Add("plate");
    messenger.Reset();
    EXPECT_EQ(messenger.Ier(), 0);
    EXPECT_EQ(Long(messenger), "Cannot find a valid message file for tag : ");
    messenger.Set("short", "long");
    messenger.Reset();
    EXPECT_EQ(Short(messenger), "DUX ERROR");
}

TEST_F(ZORDuxMessengerTest, AMissingKeyIsRaisedAndTheTextsAreEmptyThen)
{
    messenger.Set("CDA_W_0001");
    EXPECT_EQ(Short(messenger), "one {1}");
    messenger.Set("CDA_E_0002");
    ZORUnicodeString text = "as it was";
    const ZORHandle<ZORError> error = RaisedBy([&] { messenger.GetShortMsg(text); });
    EXPECT_EQ(error->GetMessage(0),
              "message catalog ZORDUXCdaErrorMsg: there is no text for CDA_E_0002.Long");
    EXPECT_EQ(text, "as it was");
    EXPECT_EQ(Short(messenger), "");
    EXPECT_EQ(Long(messenger), "");
    EXPECT_EQ(messenger.Ier(), -1);
}

TEST_F(ZORDuxMessengerTest, AMissingCatalogIsRaisedAndTheMessengerStaysUsable)
{
    messenger.Set("PNO_W_0001");
    const ZORHandle<ZORError> error = RaisedBy([&] { Long(messenger); });
    EXPECT_EQ(error->GetMessage(0),
              "message catalog ZORDUXPnoErrorMsg: not found (asked for PNO_W_0001.Short)");
    EXPECT_EQ(messenger.Ier(), 2);
    messenger.Set("CDA_W_0001");
    messenger.Add("plate");
    EXPECT_EQ(Short(messenger), "one plate");
}

TEST_F(ZORDuxMessengerTest, TextsAreInTheUsersLanguageKeyByKey)
{
    site.Write("fr/ZORDUXCdaErrorMsg", "[CDA_W_0001]\nShort = 'pi\u00e8ce {1}'\n");
    const ScopedEnvironment language("LANG", "fr_FR.UTF-8");
    messenger.Set("CDA_W_0001");
    messenger.Add("\u00e9l\u00e9ment");
    EXPECT_EQ(Short(messenger), "pi\u00e8ce \u00e9l\u00e9ment");
    EXPECT_EQ(Long(messenger), "all \u00e9l\u00e9ment {2} {3} {4} {5}");
}

TEST(ZORDuxMessenger, HasAVirtualDestructorAndNoOtherVirtualOperation)
{
    static_assert(std::has_virtual_destructor_v<ZORDuxMessenger>);
    struct Derived : ZORDuxMessenger {
        explicit Derived(bool& oGone) : gone(oGone) {}
        ~Derived() override { gone = true; }
        bool& gone;
    };
    bool gone = false;
    ZORDuxMessenger* const messenger = new Derived(gone);
    delete messenger;
    EXPECT_TRUE(gone);
}

TEST(GetDuxMessenger, IsOneForTheProcess)
{
    std::vector<ZORDuxMessenger*> got(4);
    std::vector<std::thread> threads;
    for (ZORDuxMessenger*& each : got)
        threads.emplace_back([&each] {
            each = GetDuxMessenger();
            EXPECT_EQ(each->Ier(), 0); // what another thread made is whole
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_NE(got[0], nullptr);
    EXPECT_THAT(got, testing::Each(GetDuxMessenger()));
    EXPECT_EQ(GetDuxMessenger()->Ier(), 0);
}

namespace
{

const char* const kCatalogs[] = {"ZORDUXCdaErrorMsg", "ZORDUXPS_ErrorMsg", "ZORDUXCfgErrorMsg",
                                 "ZORDUXPnoErrorMsg"};

// The short and the long text of a tag in that language, with parameters a to d.
std::string Sample(const char* iTag, const char* iLanguage)
{
    const ScopedEnvironment language("LANG", iLanguage);
    ZORDuxMessenger messenger;
    messenger.Set(iTag);
    for (const char* parameter : {"a", "b", "c", "d"})
        messenger.Add(parameter);
    return Short(messenger) + "\n" + Long(messenger);
}

} // namespace

TEST(SampleCatalogs, AgreeInAllTheirLanguages)
{
    const CatalogSite site;
    const ScopedEnvironment path("ZOR_CATALOG_PATH", EXAMPLE_CATALOGS);
    for (const char* catalog : kCatalogs)
        EXPECT_THAT(ZORMsgCatalogDifferences(catalog), testing::IsEmpty()) << catalog;
}

TEST(SampleCatalogs, GiveTextsOfEachFamilyInEachLanguage)
{
    const CatalogSite site;
    const ScopedEnvironment path("ZOR_CATALOG_PATH", EXAMPLE_CATALOGS);
    for (const char* tag :
         {"CDA_I_0001", "CDA_W_0001", "CDA_E_0001", "PS__I_0001", "PS__W_0001", "PS__E_0001",
          "CFG_I_0001", "CFG_W_0001", "CFG_E_0001", "PNO_I_0001", "PNO_W_0001", "PNO_E_0001"}) {
        const std::string english = Sample(tag, "en_GB.UTF-8");
        EXPECT_EQ(Sample(tag, "C"), english);
        EXPECT_NE(Sample(tag, "fr_FR.UTF-8"), english) << tag;
        EXPECT_NE(Sample(tag, "de_DE.UTF-8"), english) << tag;
        EXPECT_NE(Sample(tag, "de_DE.UTF-8"), Sample(tag, "fr_FR.UTF-8")) << tag;
    }
    EXPECT_EQ(Sample("CDA_W_0001", "fr"),
              "La pi\u00e8ce a est verrouill\u00e9e.\n"
              "b a verrouill\u00e9 la pi\u00e8ce a.\n"
              "Demandez sa lib\u00e9ration, ou travaillez sur une copie.");
    EXPECT_EQ(Sample("PNO_E_0001", "de"),
              "Teilenummer a ist belegt.\n"
              "Teilenummer a geh\u00f6rt schon zu b; Nummern werden {so} geschrieben: c.");
}
