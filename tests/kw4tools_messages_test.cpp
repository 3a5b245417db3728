// kw4tools message

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace
{

// A site with a catalog in two languages.
class Catalogs : public Kw4tools
{
public:
    Catalogs()
    {
        Site().Write("catalogs/ZORDUXCdaErrorMsg.toml",
                     "[CDA_W_1]\nShort = \"{1} is locked\"\nLong = \"{1} is locked by\\n{2}.\\n\"\n"
                     "[CDA_I_1]\nShort = \"saved\"\nLong = \"\"\n"
                     "[CDA_E_1]\nShort = \"only short\"\n");
        Site().Write("catalogs/fr/ZORDUXCdaErrorMsg.toml",
                     "[CDA_W_1]\nShort = \"{1} est verrouill\xc3\xa9\"\nLong = \"{1}, {2}\"\n");
        Run().Environment("ZOR_CATALOG_PATH", Site() / "catalogs");
    }
};

} // namespace

TEST(kw4tools_message, PrintsClassShortAndLongText)
{
    const Catalogs program;
    EXPECT_EQ(program.Result({"message", "CDA_W_1", "plate", "ann"}),
              "class 2\nshort plate is locked\nlong plate is locked by\\nann.\\n\n");
    EXPECT_EQ(program.Result({"message", "CDA_I_1"}), "class 1\nshort saved\nlong \n");
}

TEST(kw4tools_message, PutsParametersInByteForByte)
{
    const Catalogs program;
    EXPECT_EQ(program.Result({"message", "CDA_W_1", "[a,b]", "--", "-x\n{1}", "more"}),
              "class 2\nshort [a,b] is locked\nlong [a,b] is locked by\\n-x\\n{1}.\\n\n");
    EXPECT_EQ(program.Result({"message", "CDA_W_1"}),
              "class 2\nshort {1} is locked\nlong {1} is locked by\\n{2}.\\n\n");
}

TEST(kw4tools_message, SpeaksTheUsersLanguage)
{
    Catalogs program;
    program.Run().Environment("LANG", "fr_CA.UTF-8");
    EXPECT_EQ(program.Result({"message", "CDA_W_1", "plate", "ann"}),
              "class 2\nshort plate est verrouill\xc3\xa9\nlong plate, ann\n");
    EXPECT_EQ(program.Result({"message", "CDA_I_1"}), "class 1\nshort saved\nlong \n");
}

TEST(kw4tools_message, PrintsWhatTheMessengerSaysOfAnUnknownFamily)
{
    EXPECT_EQ(Catalogs().Result({"message", "XYZ_W_1"}),
              "class -1\nshort DUX ERROR\n"
              "long Cannot find a valid message file for tag : XYZ_W_1\n");
}

TEST(kw4tools_message, SaysWhatToDoWhenThereAreNoTexts)
{
    const Catalogs program;
    for (const char* tag : {"CDA_W_2", "CDA_E_1", "PNO_W_1"}) {
        const auto [status, out, err] = program({"message", tag});
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, HasSubstr("ZORMsgError (0x0): message catalog "));
        EXPECT_THAT(err, HasSubstr("kw4tools: the message '" + std::string(tag) +
                                   "' has no texts to print; see with 'kw4tools status'"));
    }
}

TEST(kw4tools_message, CheckPrintsWhatDiffersBetweenTheLocales)
{
    const Catalogs program;
    const auto [status, out, err] = program({"message", "--check", "ZORDUXCdaErrorMsg"});
    EXPECT_EQ(status, 1);
    EXPECT_THAT(out, HasSubstr("CDA_E_1.Short is missing in fr\n"));
    EXPECT_EQ(err, "");
    program.Site().Write("catalogs/Same.toml", "a = \"{1}\"\n");
    program.Site().Write("catalogs/fr/Same.toml", "a = \"le {1}\"\n");
    EXPECT_EQ(program.Result({"message", "--check", "Same"}), "");
    const auto missing = program({"message", "--check", "Missing"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_THAT(missing.err, HasSubstr("kw4tools: the catalog 'Missing' was not checked"));
}

TEST(kw4tools_message, TakesEitherATagOrACatalog)
{
    const Catalogs program;
    EXPECT_THAT(program({"message"}).err, HasSubstr("TAG is required"));
    EXPECT_THAT(program({"message", "CDA_W_1", "--check", "Same"}).err,
                HasSubstr("--check takes a catalog alone, and no TAG"));
    EXPECT_EQ(program({"message"}).status, 2);
    EXPECT_EQ(program({"message", "CDA_W_1", "--check", "Same"}).status, 2);
}
