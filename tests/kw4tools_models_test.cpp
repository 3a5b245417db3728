// kw4tools schema, container, classes

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace
{

// A site with schema libraries in its directory, which is the current one.
class Schemas : public Kw4tools
{
public:
    // Makes a schema library of that name out of C.
    void Compile(const std::string& iName, const std::string& iSource,
                 const std::string& iOptions = "")
    {
        Site().Write(iName + ".c", iSource);
        const std::string command = "cd '" + Site().Path().string() + "' && " KW_C_COMPILER +
                                    " -shared -fPIC -o lib" + iName + ".so " + iOptions + " " +
                                    iName + ".c";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }
};

std::string Creation(const std::string& iName, const std::string& iBody)
{
    return "void* fctCreate" + iName + "(void) { " + iBody + " return 0; }\n";
}

} // namespace

TEST(kw4tools_schema, LoadRunsTheCreationFunctionAndPrintsNothing)
{
    Schemas program;
    program.Compile("Good",
                    "#include <stdio.h>\n" +
                        Creation("Good", "fclose(fopen(\"ran\", \"w\")); puts(\"noise\");"));
    const auto [status, out, err] = program({"schema", "load", "Good"});
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "noise\n");
    EXPECT_TRUE(std::filesystem::exists(program.Site() / "ran"));
}

TEST(kw4tools_schema, LoadFindsTheLibraryAlongLdLibraryPathOrTakesThePath)
{
    Schemas program;
    program.Compile("Good", Creation("Good", ""));
    std::filesystem::create_directory(program.Site() / "away");
    std::filesystem::rename(program.Site() / "libGood.so", program.Site() / "away/libGood.so");
    EXPECT_EQ(program({"schema", "load", "Good"}).status, 2);
    EXPECT_EQ(program.Result({"schema", "load", "Good", "--path", "away/libGood.so"}), "");
    program.Run().Environment("LD_LIBRARY_PATH", "nowhere:" + program.Site() / "away");
    EXPECT_EQ(program.Result({"schema", "load", "Good"}), "");
}

TEST(kw4tools_schema, LoadTellsWhatIsWrong)
{
    Schemas program;
    program.Compile("Idle", "int other;");
    program.Compile("Crash", "#include <stdlib.h>\n" + Creation("Crash", "abort();"));
    program.Compile("Exit", "#include <stdlib.h>\n" + Creation("Exit", "exit(0);"));
    program.Compile("Lacking", "void Lacked(void);\n" + Creation("Lacking", "Lacked();"));
    const struct {
        Kw4tools::Arguments arguments;
        const char* library;
        const char* program;
    } rows[] = {
        {{"Nothing"}, "line 120\n", "'Nothing' was not loaded; 'kw4tools schema check Nothing'"},
        {{"Idle"}, "line 262\n", "'Idle' was not loaded"},
        {{"Idle", "--path", "missing"}, "line 205\n", "'Idle' was not loaded"},
        {{"Idle", "--path", "libIdle.so"}, "line 262\n", "'Idle' was not loaded"},
        {{"Lacking"}, "Lacked", "'Lacking' was not loaded"},
        {{"Exit"}, "", "'Exit' was not loaded"},
        {{"Crash"}, "", "the schema 'Crash' ended its process: Aborted"},
    };
    for (const auto& row : rows) {
        Kw4tools::Arguments arguments = row.arguments;
        arguments.insert(arguments.begin(), {"schema", "load"});
        const auto [status, out, err] = program(arguments);
        SCOPED_TRACE(err);
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, HasSubstr(row.library));
        EXPECT_THAT(err, HasSubstr("kw4tools: "));
        EXPECT_THAT(err, HasSubstr(row.program));
    }
}

TEST(kw4tools_schema, LoadTellsWhatTheCreationFunctionRaises)
{
    Schemas program;
    const std::string asCpp = "-x c++";
    program.Compile("Licence",
                    "#include <stdexcept>\nextern \"C\" " +
                        Creation("Licence", "throw std::runtime_error(\"no licence\");"),
                    asCpp);
    program.Compile("Number", "extern \"C\" " + Creation("Number", "throw 7;"), asCpp);
    const struct {
        const char* schema;
        const char* told;
    } rows[] = {
        {"Licence", "kw4tools: no licence\n"},
        {"Number", "kw4tools: something unknown was raised\n"},
    };
    for (const auto& row : rows) {
        const auto [status, out, err] = program({"schema", "load", row.schema});
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, HasSubstr(row.told));
        EXPECT_THAT(err, HasSubstr(std::string("'") + row.schema + "' was not loaded"));
    }
}

TEST(kw4tools_schema, CheckPrintsAllThatIsMissing)
{
    Schemas program;
    program.Compile("Good", Creation("Good", ""));
    program.Compile("Idle", "int other;");
    program.Compile("Lacking", "void One(void);\nvoid other(void) { One(); }\n");
    program.Compile("Bound", "__attribute__((visibility(\"protected\"))) " + Creation("Bound", ""));
    program.Compile("Own", "__attribute__((visibility(\"hidden\"))) " + Creation("Own", ""));
    const struct {
        const char* schema;
        const char* missing;
    } rows[] = {
        {"Good", ""},
        {"Idle", "creation function fctCreateIdle\n"},
        {"Lacking", "symbol One\ncreation function fctCreateLacking\n"},
        {"Nothing", "library libNothing.so\n"},
        {"Bound", ""},
        {"Own", "creation function fctCreateOwn\n"},
    };
    for (const auto& row : rows) {
        const auto [status, out, err] = program({"schema", "check", row.schema});
        SCOPED_TRACE(row.schema);
        EXPECT_EQ(status, *row.missing ? 1 : 0);
        EXPECT_EQ(out, row.missing);
        EXPECT_EQ(err, "");
    }
}

TEST(kw4tools_container, PrintsTypeAndSchemaOfTheModelBehindIt)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"container", "Assembly", "AP214"}), "Assembly AP214\n");
    EXPECT_EQ(program.Result({"container", "", ""}), " \n");
    EXPECT_EQ(program.Result({"container", "[a,b]", "\xc3\xa9"}), "[a,b] \xc3\xa9\n");
}

TEST(kw4tools_classes, PrintsTheClassesThatSupportAnInterface)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"classes", "ZORIDuxServices"}), "ZORDuxServices\n");
    EXPECT_EQ(program.Result({"classes", "ZORIDuxModel"}), "ZORDuxModel\n");
    EXPECT_EQ(program.Result({"classes", "NoInterface"}), "");
}
