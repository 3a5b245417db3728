// What the commands of kw4tools print with --json.

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

using Arguments = Kw4tools::Arguments;

// Standard output of a run, whatever its exit status.
std::string Printed(const Kw4tools& iProgram, const Arguments& iArguments, int iStatus)
{
    const auto [status, out, err] = iProgram(iArguments);
    EXPECT_EQ(status, iStatus) << err;
    EXPECT_EQ(err, "");
    return out;
}

} // namespace

TEST(kw4tools_json, ListsSettingsAsAnArrayOfNames)
{
    const Kw4tools program;
    program.Site().Write("site.toml",
                         "A = \"1\"\n'two \"words\"' = \"2\"\n\"\\u0000\\u00FF\" = \"3\"\n");
    EXPECT_EQ(program.Result({"settings", "list", "site", "--json"}),
              "[\"A\",\"two \\\"words\\\"\",[255]]\n");
    EXPECT_EQ(program.Result({"settings", "list", "none", "--json"}), "[]\n");
}

TEST(kw4tools_json, TellsWhatASearchFound)
{
    const Kw4tools program;
    const std::string models = program.Site() / "models";
    program.Site().Write("models/plate", "");
    program.Site().Write("DUXAdmin.toml", "DUX_SEARCH_PATH = \"/none:" + models + "\"\n");
    EXPECT_EQ(program.Result({"search", "plate", "--json"}),
              "{\"name\":\"plate\",\"path\":\"" + models + "/plate\"}\n");
    EXPECT_EQ(Printed(program, {"search", "bolt", "--json"}, 1),
              "{\"name\":\"bolt\",\"path\":null}\n");
}

TEST(kw4tools_json, HoldsTheExplanationOfASearchInsteadOfStandardError)
{
    const Kw4tools program;
    program.Site().Write("models/plate", "");
    program.Site().Write("DUXAdmin.toml",
                         "DUX_SEARCH_PATH = \"/none:$$MORE\"\nMORE = \"models\"\n");
    EXPECT_EQ(Printed(program, {"search", "plate", "--json", "--explain"}, 0),
              "{\"name\":\"plate\",\"path\":\"models/plate\",\"stages\":[{"
              "\"stage\":\"along the search path (DUX_SEARCH_PATH in DUXAdmin)\","
              "\"notes\":[\"$$MORE gives models\"],"
              "\"places\":[{\"path\":\"/none/plate\",\"found\":false},"
              "{\"path\":\"models/plate\",\"found\":true}]}]}\n");
    EXPECT_THAT(Printed(program, {"search", "bolt", "--json", "--explain"}, 1),
                EndsWith("{\"stage\":\"in the current directory\",\"notes\":[],"
                         "\"places\":[{\"path\":\"bolt\",\"found\":false}]}]}\n"));
}

TEST(kw4tools_json, TellsWhatMayBeDoneWithAFile)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"check", "/dev/null", "--json"}),
              "{\"path\":\"/dev/null\",\"exists\":true,\"readable\":true,\"writable\":true,"
              "\"executable\":false}\n");
    EXPECT_EQ(Printed(program, {"check", "/none", "--json"}, 1),
              "{\"path\":\"/none\",\"exists\":false,\"readable\":false,\"writable\":false,"
              "\"executable\":false}\n");
}

TEST(kw4tools_json, ComparesIntervals)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"interval", "1:10", "3:5", "--json"}),
              "{\"code\":2,\"result\":[1,2,6,10],"
              "\"pieces\":[{\"start\":1,\"end\":2},{\"start\":6,\"end\":10}]}\n");
    EXPECT_EQ(program.Result({"interval", "1:10", "3", "--json"}),
              "{\"code\":6,\"result\":[11,1,2],"
              "\"pieces\":[{\"start\":11,\"end\":null},{\"start\":1,\"end\":2}]}\n");
    EXPECT_EQ(program.Result({"interval", "-3:10", "0:10", "--json"}),
              "{\"code\":2,\"result\":null,\"pieces\":[]}\n");
    EXPECT_THAT(program.Result({"interval", "1:10", "1:10", "--json"}), StartsWith("{\"code\":"));
}

TEST(kw4tools_json, TellsListsOfIdentifiersAndAnswers)
{
    const Kw4tools program;
    program.Site().Write("a", "01\n\nFF\n01\n");
    program.Site().Write("b", "ff\n");
    EXPECT_EQ(program.Result({"ids", "unique", "a", "--json"}), "[\"\",\"ff\",\"01\"]\n");
    EXPECT_EQ(program.Result({"ids", "intersect", "a", "b", "--json"}), "[\"ff\"]\n");
    EXPECT_EQ(program.Result({"ids", "subtract", "b", "a", "--json"}), "[]\n");
    EXPECT_EQ(program.Result({"ids", "contains", "a", "01", "--json"}), "true\n");
    EXPECT_EQ(Printed(program, {"ids", "contains", "b", "01", "--json"}, 1), "false\n");
    EXPECT_EQ(program.Result({"ids", "equal", "0A", "0a", "--json"}), "true\n");
    EXPECT_EQ(Printed(program, {"ids", "equal", "0A", "", "--json"}, 1), "false\n");
}

TEST(kw4tools_json, PrintsMessagesAndTheDifferencesOfACatalog)
{
    Kw4tools program;
    program.Run().Environment("ZOR_CATALOG_PATH", program.Site().Path());
    program.Site().Write("ZORDUXCdaErrorMsg.toml",
                         "[CDA_W_0001]\nShort = \"Plate {1}\"\nLong = \"two\\nlines\"\n");
    program.Site().Write("Texts.toml", "A = \"x\"\n");
    program.Site().Write("fr/Texts.toml", "B = \"y\"\n");
    EXPECT_EQ(program.Result({"message", "CDA_W_0001", "a\xFF", "--json"}),
              "{\"class\":2,\"short\":[80,108,97,116,101,32,97,255],\"long\":\"two\\nlines\"}\n");
    EXPECT_THAT(Printed(program, {"message", "--check", "Texts", "--json"}, 1),
                testing::MatchesRegex("\\[\"[^\"]+\",\"[^\"]+\"\\]\n"));
    program.Site().Write("fr/Texts.toml", "A = \"y\"\n");
    EXPECT_EQ(program.Result({"message", "--check", "Texts", "--json"}), "[]\n");
}

TEST(kw4tools_json, TellsTheStatus)
{
    Kw4tools program;
    const std::string root = program.Site().Path();
    program.Site().Write("one/DUXAdmin.toml", "DUX_SEARCH_PATH = \"/none:" + root + "\"\n");
    program.Site().Write("two/DUXAdmin.toml", "");
    program.Site().Write("texts/Texts.toml", "");
    program.Site().Write("dictionary/rights.toml", "");
    program.Run()
        .Environment("ZOR_SETTINGS_PATH", root + "/one:" + root + "/two")
        .Environment("ZOR_CATALOG_PATH", root + "/texts")
        .Environment("ZOR_DICTIONARY_PATH", root + "/dictionary");
    const std::string status = program.Result({"status", "--json"});
    EXPECT_THAT(status,
                StartsWith("{\"settings\":[{\"directory\":\"" + root +
                           "/one\",\"exists\":true,\"files\":[{\"path\":\"" + root +
                           "/one/DUXAdmin.toml\",\"shadowed_by\":null}]},{\"directory\":\"" + root +
                           "/two\",\"exists\":true,\"files\":[{\"path\":\"" + root +
                           "/two/DUXAdmin.toml\",\"shadowed_by\":\"" + root +
                           "/one/DUXAdmin.toml\"}]}],\"catalogs\":[{\"directory\":\"" + root +
                           "/texts\",\"exists\":true,\"files\":[{\"path\":\"" + root +
                           "/texts/Texts.toml\",\"behind\":null}]}"));
    EXPECT_THAT(status, EndsWith("],\"dictionaries\":[{\"directory\":\"" + root +
                                 "/dictionary\",\"exists\":true,\"files\":[{\"path\":\"" + root +
                                 "/dictionary/rights.toml\"}]}],\"search_path\":[{\"directory\":"
                                 "\"/none\",\"exists\":false},{\"directory\":\"" +
                                 root + "\",\"exists\":true}]}\n"));
}

TEST(kw4tools_json, PrintsNothingWhenAnErrorIsRaised)
{
    const Kw4tools program;
    program.Site().Write("DUXAdmin.toml", "DUX_SEARCH_PATH =\n");
    for (const Arguments& arguments : {Arguments{"status", "--json"},
                                       {"search", "x", "--json"},
                                       {"search", "x", "--json", "--explain"},
                                       {"settings", "list", "DUXAdmin", "--json"},
                                       {"message", "CDA_W_0001", "--json"}}) {
        SCOPED_TRACE(arguments.front());
        const auto [status, out, err] = program(arguments);
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, HasSubstr("kw4tools: "));
    }
}
