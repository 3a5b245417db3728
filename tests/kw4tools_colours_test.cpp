// Where kw4tools prints in colour.

#include "Kw4tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::Not;

namespace
{

const char kEscape[] = "\033";

// What a person sees on the terminal of a program that is set up by `iSetUp`.
template <class SetUp>
std::string Seen(const Kw4tools::Arguments& iArguments, SetUp iSetUp)
{
    Kw4tools program;
    program.Site().Write("models/plate", "");
    program.Site().Write("one/DUXAdmin.toml", "DUX_SEARCH_PATH = \"/none:models\"\n");
    program.Site().Write("two/DUXAdmin.toml", "");
    program.Run()
        .Environment("ZOR_SETTINGS_PATH", (program.Site() / "one") + ":" + (program.Site() / "two"))
        .Environment("TERM", "xterm");
    iSetUp(program.Run());
    const auto [status, out, err] = program(iArguments);
    return out + err;
}

const Kw4tools::Arguments kFound = {"search", "plate", "--explain"};
const Kw4tools::Arguments kNotFound = {"search", "bolt", "--explain"};

} // namespace

TEST(kw4tools_colours, MarkTheVerdictsOnATerminal)
{
    const auto terminal = [](RunProgram& ioRun) { ioRun.OnTerminal(); };
    EXPECT_THAT(Seen(kFound, terminal),
                HasSubstr("  \033[33mnot there\033[0m  /none/plate\n"
                          "  \033[32mfound    \033[0m  models/plate\nmodels/plate\n"));
    EXPECT_THAT(Seen(kNotFound, terminal), HasSubstr("\033[31mnot found\033[0m\n"));
    const std::string status = Seen({"status"}, terminal);
    EXPECT_THAT(status, HasSubstr("/one (\033[32mexists\033[0m)\n"));
    EXPECT_THAT(status, HasSubstr("search path entry: /none (\033[33mmissing\033[0m)\n"));
    EXPECT_THAT(status, HasSubstr("/two/DUXAdmin.toml (\033[33mshadowed by\033[0m "));
}

TEST(kw4tools_colours, AreNowhereElse)
{
    for (const Kw4tools::Arguments& arguments : {kFound, kNotFound, {"status"}})
        EXPECT_THAT(Seen(arguments, [](RunProgram&) {}), Not(HasSubstr(kEscape)));
    for (const char* command : {"check", "split"})
        EXPECT_THAT(Seen({command, "/"}, [](RunProgram& ioRun) { ioRun.OnTerminal(); }),
                    Not(HasSubstr(kEscape)));
}

TEST(kw4tools_colours, AreLeftOutForThoseWhoWantNone)
{
    const auto unwanted = [](RunProgram& ioRun) {
        ioRun.OnTerminal().Environment("NO_COLOR", "1");
    };
    const auto dumb = [](RunProgram& ioRun) { ioRun.OnTerminal().Environment("TERM", "dumb"); };
    const auto empty = [](RunProgram& ioRun) { ioRun.OnTerminal().Environment("NO_COLOR", ""); };
    EXPECT_THAT(Seen(kFound, unwanted), Not(HasSubstr(kEscape)));
    EXPECT_THAT(Seen({"status"}, unwanted), Not(HasSubstr(kEscape)));
    EXPECT_THAT(Seen(kFound, dumb), Not(HasSubstr(kEscape)));
    EXPECT_THAT(Seen(kFound, empty), HasSubstr(kEscape)) << "set to nothing it says nothing";
}
