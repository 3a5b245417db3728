// The program as a whole: usage, help, exit statuses, what happens to arguments and to output. Its
// commands have tests of their own.

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

using Arguments = Kw4tools::Arguments;

// One of each kind of command, as they are called.
const std::vector<Arguments> kCommands = {
    {},
    {"settings"},
    {"settings", "get"},
    {"settings", "put"},
    {"settings", "remove"},
    {"settings", "list"},
    {"settings", "edit"},
    {"search"},
    {"find"},
    {"split"},
    {"env"},
    {"expand"},
    {"check"},
    {"read"},
    {"write"},
    {"id"},
    {"status"},
    {"text"},
    {"interval"},
    {"ids"},
    {"ids", "unique"},
    {"ids", "intersect"},
    {"ids", "subtract"},
    {"ids", "contains"},
    {"ids", "equal"},
    {"schema"},
    {"schema", "load"},
    {"schema", "check"},
    {"container"},
    {"classes"},
    {"message"},
    {"report"},
};

Arguments With(Arguments iCommand, const std::string& iMore)
{
    iCommand.push_back(iMore);
    return iCommand;
}

} // namespace

TEST(kw4tools, FindsAFileAlongTheSearchPath)
{
    Kw4tools program;
    const std::string plate = program.Site().Write("models/plate.model", "");
    program.Result({"settings", "put", "DUXAdmin", "DUX_SEARCH_PATH", program.Site() / "models"});
    EXPECT_EQ(program.Result({"search", "plate.model"}), plate + "\n");
}

TEST(kw4tools, PrintsHelpWithAnExampleForEveryCommand)
{
    const Kw4tools program;
    for (const Arguments& command : kCommands) {
        const auto [status, out, err] = program(With(command, "--help"));
        SCOPED_TRACE(out);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(err, "");
        EXPECT_THAT(out, HasSubstr("Usage: kw4tools"));
        EXPECT_THAT(out, HasSubstr("Example:\n  kw4tools "));
        EXPECT_EQ(program(With(command, "-h")).out, out);
    }
}

TEST(kw4tools, PrintsItsVersion)
{
    EXPECT_EQ(Kw4tools().Result({"--version"}), "kw4tools " KW4TOOLS_VERSION "\n");
}

TEST(kw4tools, TellsWrongUsageOnStandardErrorAndExitsWithTwo)
{
    const struct {
        Arguments arguments;
        const char* problem;
        const char* help;
    } rows[] = {
        {{}, "say which command", "kw4tools"},
        {{"settings"}, "say which command", "kw4tools settings"},
        {{"frobnicate"}, "there is no command 'frobnicate'", "kw4tools"},
        {{"settings", "frobnicate"}, "there is no command 'frobnicate'", "kw4tools settings"},
        {{""}, "there is no command ''", "kw4tools"},
        {{"find", "a"}, "PATHLIST is required", "kw4tools find"},
        {{"find", "a", "b", "[c,d]"}, "one argument too many: '[c,d]'", "kw4tools find"},
        {{"find", "a", "b", "c", "d"}, "arguments too many: 'c', 'd'", "kw4tools find"},
        {{"find", "-x", "b"}, "there is no option '-x'", "kw4tools find"},
        {{"find", "--explain", "b"}, "there is no option '--explain'", "kw4tools find"},
        {{"settings", "get", "--frob=1"}, "there is no option '--frob'", "kw4tools settings get"},
        {{"--separator"}, "--separator needs a value", "kw4tools"},
        {{"schema", "load", "a", "--path"}, "--path needs a value", "kw4tools schema load"},
        {{"--separator", "a", "--separator", "b", "split", "c"},
         "--separator is given twice",
         "kw4tools"},
        {{"--trace=maybe", "split", "c"}, "--trace takes no value", "kw4tools"},
        {{"id", "--count", "x"}, "--count is 'x', which is not a whole number", "kw4tools id"},
        {{"id", "--count", ""}, "--count is '', which is not a whole number", "kw4tools id"},
        {{"id", "--count", "2147483648"}, "does not fit 32 bits", "kw4tools id"},
        {{"id", "--count", "99999999999999999999"}, "does not fit 32 bits", "kw4tools id"},
        {{"interval", "1:2", "3", "--draw", "--json"}, "give one of them", "kw4tools interval"},
        {{"settings", "list", "f", "-0", "--json"}, "give one of them", "kw4tools settings list"},
        {{"report"}, "FILE is required", "kw4tools report"},
        {{"id", "--count", "-1"}, "it cannot be negative", "kw4tools id"},
    };
    const Kw4tools program;
    for (const auto& row : rows) {
        const auto [status, out, err] = program(row.arguments);
        SCOPED_TRACE(err);
        EXPECT_EQ(status, 2);
        EXPECT_EQ(out, "");
        EXPECT_THAT(err, StartsWith("kw4tools: "));
        EXPECT_THAT(err, HasSubstr(row.problem));
        EXPECT_THAT(err, EndsWith("\nTry '" + std::string(row.help) + " --help'.\n"));
    }
}

TEST(kw4tools, AsksWhetherANameThatIsNearlyRightWasMeant)
{
    const struct {
        Arguments arguments;
        const char* problem;
    } rows[] = {
        {{"sttings"}, "there is no command 'sttings' (did you mean 'kw4tools settings'?)\n"},
        {{"settings", "gte"}, "no command 'gte' (did you mean 'kw4tools settings get'?)\n"},
        {{"get"}, "there is no command 'get' (did you mean 'kw4tools settings get'?)\n"},
        {{"text", "find"}, "there is no command 'find' (did you mean 'kw4tools find'?)\n"},
        {{"search", "--explian"}, "there is no option '--explian' (did you mean '--explain'?); if"},
        {{"split", "--sep=:"}, "there is no option '--sep' (did you mean '--separator'?); if"},
        {{"frobnicate"}, "there is no command 'frobnicate'\n"},
        {{""}, "there is no command ''\n"},
        {{"split", "--frob"}, "there is no option '--frob'; if"},
        {{"split", "-x"}, "there is no option '-x'; if"},
        {{"split", "---"}, "there is no option '---'; if"},
    };
    const Kw4tools program;
    for (const auto& row : rows)
        EXPECT_THAT(program(row.arguments).err, HasSubstr(row.problem));
}

// The arguments that command-line parsers are fond of reading something into.
TEST(kw4tools, TakesEveryArgumentByteForByte)
{
    const Kw4tools program;
    for (const std::string argument :
         {"[a,b]",    "[]",   "a,b",  "\"x\"", "'y'",      "`z`",     "%%",  "%s", "",
          " ",        "{}",   "\\n",  "\\",    "++",       "#",       "a=b", "=",  "@file",
          "*",        "~",    "-",    "-5",    "-5:-3",    "-0",      "-1x", "/x", "split",
          "settings", "a\nb", "\x01", "\x01x", "\xff\xfe", "\xc3\xa9"}) {
        SCOPED_TRACE(argument);
        EXPECT_EQ(program.Result({"expand", argument}), argument + "\n");
        EXPECT_EQ(program.Result({"expand", "--", argument}), argument + "\n");
        EXPECT_EQ(program.Result({"--separator", argument + "@", "split", "X@Y"}), "X\nY\n");
        EXPECT_EQ(program.Result({"--separator=" + argument + "@", "split", "X@Y"}), "X\nY\n");
    }
    for (const std::string argument : {"--", "-x", "--trace", "--help", "-h", "-"})
        EXPECT_EQ(program.Result({"expand", "--", argument}), argument + "\n");
    EXPECT_EQ(program.Result({"--separator", "--", "split", "a-b"}), "a\nb\n");
    EXPECT_EQ(program.Result({"--", "expand", "x"}), "x\n");
}

TEST(kw4tools, TakesItsOptionsBehindTheCommandToo)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"split", "a-b", "--separator", "-"}), "a\nb\n");
    EXPECT_THAT(program({"split", "a:b", "--trace"}).err, HasSubstr("iFullPath = a:b\n"));
}

TEST(kw4tools, SeparatesDirectoriesAtEachCharacterOfTheSeparator)
{
    const Kw4tools program;
    EXPECT_EQ(program.Result({"--separator", ";,", "split", "a;b,c:d"}), "a\nb\nc:d\n");
    EXPECT_EQ(program.Result({"--separator", "", "split", "a:b"}), "a:b\n");
}

TEST(kw4tools, TracesOnlyWhenAskedTo)
{
    const Kw4tools program;
    const std::string line = "   ZORDuxServices::SeekPath iFullPath = a\n";
    EXPECT_EQ(program({"split", "a"}).err, "");
    EXPECT_EQ(program({"--trace", "split", "a"}).err, line);
    EXPECT_EQ(program({"--trace", "split", "a"}).out, "a\n");
}

TEST(kw4tools, AppendsTheTraceToTheFileThatTheEnvironmentNames)
{
    Kw4tools program;
    program.Site().Write("trace", "before\n");
    program.Run().Environment("ZOR_PSN_TRACE_FILE", program.Site() / "trace");
    EXPECT_EQ(program({"--trace", "split", "a"}).err, "");
    EXPECT_EQ(program.Site().Read("trace"), "before\n   ZORDuxServices::SeekPath iFullPath = a\n");
}

TEST(kw4tools, KeepsAHigherTraceLevelOfTheEnvironment)
{
    Kw4tools program;
    program.Run().Environment("ZOR_PSN_TRACE", "50").Environment("ZOR_PSN_TRACE_CALLS", "1");
    const std::string traced = program({"split", "a"}).err;
    EXPECT_THAT(traced, HasSubstr("> ZORDuxServices::SeekPath\n"));
    EXPECT_EQ(program({"--trace", "split", "a"}).err, traced);
}

TEST(kw4tools, CannotSucceedWhenItsResultsCannotBeWritten)
{
    for (const Arguments& arguments : {Arguments{"id"},
                                       {"id", "--count", "10000"},
                                       {"--help"},
                                       {"--version"},
                                       {"split", "a"},
                                       {"check", "/nonexistent"}}) {
        SCOPED_TRACE(arguments.front());
        Kw4tools full;
        full.Run().OutputTo("/dev/full");
        EXPECT_EQ(full(arguments).status, 2);
        EXPECT_EQ(full(arguments).err,
                  "kw4tools: cannot write the results to standard output: No space left on "
                  "device\n");
        Kw4tools broken;
        broken.Run().OutputToBrokenPipe();
        EXPECT_EQ(broken(arguments).status, 2);
        EXPECT_THAT(broken(arguments).err, HasSubstr("Broken pipe\n"));
        Kw4tools closed;
        closed.Run().Closed(1);
        EXPECT_EQ(closed(arguments).status, 2);
        EXPECT_THAT(closed(arguments).err, HasSubstr("Bad file descriptor\n"));
    }
}

TEST(kw4tools, DoesWithoutAnOutputThatItHasNoUseFor)
{
    Kw4tools program;
    program.Run().Closed(0).Closed(1).Closed(2);
    EXPECT_EQ(program({"settings", "put", "f", "n", "v"}).status, 0);
    EXPECT_EQ(program.Site().Read("f.toml"), "n = \"v\"\n");
    EXPECT_EQ(program({"find", "nothing", "/nowhere"}).status, 1);
}
