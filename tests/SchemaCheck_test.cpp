#include "SchemaCheck.h"

#include "CapturedOutput.h"
#include "CreateServices.h"
#include "DynamicSymbols.h"
#include "SchemaSite.h"
#include "ScopedEnvironment.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> Missing(const std::string& iSchema)
{
    const CapturedOutput output(STDOUT_FILENO);
    const CapturedOutput errors(STDERR_FILENO);
    std::vector<std::string> missing = SchemaCheck(iSchema).Missing();
    EXPECT_EQ(output.Text(), "");
    EXPECT_EQ(errors.Text(), "");
    return missing;
}

} // namespace

TEST(SchemaCheck, FindsNothingMissingInALibraryThatLoads)
{
    const SchemaSite site;
    const std::string path = site.Install(KW_SCHEMA_GOOD, "a/libGood.so");
    EXPECT_THAT(Missing("Good"), IsEmpty());
    EXPECT_FALSE(SchemaSite::IsLoaded(path)) << "not in this process";
}

TEST(SchemaCheck, TellsEverySymbolThatIsMissingAndRunsNothing)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_LACKING, "a/libLacking.so");
    std::vector<std::string> missing = Missing("Lacking");
    std::sort(missing.begin(), missing.end());
    EXPECT_THAT(missing, ElementsAre("symbol nowhereFunction", "symbol nowhereVariable",
                                     "symbol site::Nowhere(char const*) (_ZN4site7NowhereEPKc)"));
}

TEST(SchemaCheck, WhatTheUserAsksTheLoaderToTellDoesNotCount)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_DEPENDENT, "a/libDependent.so");
    // "help" has the loader tell what it can tell, and nothing else.
    for (const char* const asked : {"help", "all"}) {
        const ScopedEnvironment debug("LD_DEBUG", asked);
        EXPECT_THAT(Missing("Dependent"),
                    ElementsAre("dependency libSchemaDependency.so", "symbol depended"));
    }
}

TEST(SchemaCheck, TellsADependencyThatIsMissingAndItsSymbols)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_DEPENDENT, "a/libDependent.so");
    EXPECT_THAT(Missing("Dependent"),
                ElementsAre("dependency libSchemaDependency.so", "symbol depended"));
}

TEST(SchemaCheck, FindsADependencyWhereTheLoaderDoes)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_DEPENDENT, "a/libDependent.so");
    site.Install(KW_SCHEMA_DEPENDENCY, "a/libSchemaDependency.so");
    EXPECT_THAT(Missing("Dependent"), IsEmpty());
}

TEST(SchemaCheck, TellsAVersionThatADependencyDoesNotHave)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_DEPENDENT, "a/libDependent.so");
    std::string bytes = site.Read(site.Install(KW_SCHEMA_DEPENDENCY, "b/copy"));
    const std::size_t version = bytes.find(std::string("DEPEND_1") + '\0');
    ASSERT_NE(version, std::string::npos);
    bytes[version + 7] = '2';
    site.Write("a/libSchemaDependency.so", bytes);
    EXPECT_THAT(Missing("Dependent"),
                ::testing::Contains("dependency libSchemaDependency.so of version DEPEND_1"));
}

TEST(SchemaCheck, TellsThatTheCreationFunctionIsMissing)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_WITHOUTCREATION, "a/libFoo.so");
    EXPECT_THAT(Missing("Foo"), ElementsAre("creation function fctCreateFoo"));
}

TEST(SchemaCheck, FindsTheCreationFunctionInADependencyAsTheLoaderDoes)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_DEPENDENT, "a/libInner.so");
    site.Install(KW_SCHEMA_DEPENDENCY, "a/libSchemaDependency.so");
    EXPECT_THAT(Missing("Inner"), IsEmpty());
    CreateServices()->LoadSchema("Inner");
}

TEST(SchemaCheck, CountsTheLibrariesOfTheProgramAsThere)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_HOSTED, "a/libHosted.so");
    EXPECT_THAT(Missing("Hosted"), IsEmpty());
    CreateServices()->LoadSchema("Hosted");
    EXPECT_THAT(Missing("Hosted"), IsEmpty()) << "also once it is loaded";
}

TEST(SchemaCheck, WhatALibraryOfTheProgramLacksIsNotTheSchemasLack)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_LAZY, "a/libLazy.so");
    site.Install(KW_SCHEMA_GOOD, "a/libGood.so");
    CreateServices()->LoadSchema("Lazy");
    EXPECT_THAT(Missing("Good"), IsEmpty());
    EXPECT_THAT(Missing("Lazy"), ElementsAre("symbol nowhereUntilCalled"));
}

TEST(SchemaCheck, TellsALibraryThatIsNotFound)
{
    const SchemaSite site;
    EXPECT_THAT(Missing("Foo"), ElementsAre("library libFoo.so"));
    EXPECT_THAT(Missing(""), ElementsAre("library lib.so"));
    EXPECT_THAT(Missing("../x"), ElementsAre("library lib../x.so"));
    const std::string longName(10000, 'n');
    EXPECT_THAT(Missing(longName), ElementsAre("library lib" + longName + ".so"));
}

TEST(SchemaCheck, TellsWhyTheLoaderRefusesAFile)
{
    const SchemaSite site;
    const std::string text = site.Write("a/libText.so", "this is no library\n");
    EXPECT_THAT(Missing("Text"), ElementsAre("library " + text + ": file too short"));
    const std::string foreign = site.InstallForOtherMachine(KW_SCHEMA_GOOD, "a/libGood.so");
    EXPECT_THAT(Missing("Good"), ElementsAre(::testing::StartsWith("library " + foreign + ": ")));
    std::filesystem::create_directory(site / "a/libDirectory.so");
    EXPECT_THAT(Missing("Directory"),
                ElementsAre(::testing::StartsWith("library " + (site / "a/libDirectory.so: "))));
}

TEST(SchemaCheck, ALibraryInTheCurrentDirectoryIsThatOne)
{
    const SchemaSite site;
    site.Install(KW_SCHEMA_WITHOUTCREATION, "here/libOther.so");
    site.Install(KW_SCHEMA_GOOD, "a/libOther.so");
    EXPECT_THAT(Missing("Other"), IsEmpty());
    site.Write("here/libGood.so", "this is no library\n");
    site.Install(KW_SCHEMA_GOOD, "a/libGood.so");
    EXPECT_THAT(Missing("Good"), ElementsAre("library libGood.so: file too short"));
}

// Libraries cut short, or with any one byte of their headers changed, are told of and nothing else
// happens.
TEST(SchemaCheck, SurvivesDamagedLibraries)
{
    const SchemaSite site;
    const std::string bytes = site.Read(site.Install(KW_SCHEMA_GOOD, "b/copy"));
    for (std::size_t size = 0; size < bytes.size(); size += 1 + bytes.size() / 40) {
        site.Write("a/libGood.so", bytes.substr(0, size));
        EXPECT_NO_THROW(Missing("Good")) << size;
    }
    for (std::size_t at = 0; at < 64; ++at) {
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 0xff);
        site.Write("a/libGood.so", damaged);
        EXPECT_NO_THROW(Missing("Good")) << at;
        EXPECT_NO_THROW(ExportsSymbol(site / "a/libGood.so", "fctCreateGood")) << at;
    }
    for (std::size_t at = bytes.size() - 2048; at < bytes.size(); at += 3) { // the sections
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 0xff);
        site.Write("a/libGood.so", damaged);
        EXPECT_NO_THROW(ExportsSymbol(site / "a/libGood.so", "fctCreateGood")) << at;
    }
}

TEST(ExportsSymbol, KnowsFunctionsAndVariablesThatOthersCanSee)
{
    EXPECT_TRUE(ExportsSymbol(KW_SCHEMA_GOOD, "fctCreateGood"));
    EXPECT_TRUE(ExportsSymbol(KW_SCHEMA_GOOD, "creations"));
    EXPECT_FALSE(ExportsSymbol(KW_SCHEMA_GOOD, "fctCreate"));
    EXPECT_FALSE(ExportsSymbol(KW_SCHEMA_GOOD, ""));
    EXPECT_FALSE(ExportsSymbol(KW_SCHEMA_LACKING, "nowhereFunction")) << "only used there";
    EXPECT_FALSE(ExportsSymbol("/nowhere", "fctCreateGood"));
    EXPECT_FALSE(ExportsSymbol(__FILE__, "fctCreateGood"));
}
