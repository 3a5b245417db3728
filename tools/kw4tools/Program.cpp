#include "Program.h"

#include "Failure.h"
#include "RawArguments.h"
#include "ServicesTrace.h"
#include "ZORRaisedError.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <new>

namespace
{

const char kPurpose[] = "Find files along search paths, keep settings, and more of the common "
                        "services of\nthe suite, from the command line.";
constexpr char kVersionHelp[] = "Print the version and exit";
constexpr char kHelpHelp[] = "Print this help and exit";

Status Tell(const std::string& iProblem)
{
    std::cerr << "kw4tools: " << iProblem << std::endl;
    return Status::Wrong;
}

std::string TooMuch(const std::vector<std::string>& iMarked)
{
    std::string names;
    for (const std::string& each : iMarked)
        names += (names.empty() ? "'" : ", '") + RawArgument(each) + "'";
    return (iMarked.size() == 1 ? "one argument too many: " : "arguments too many: ") + names;
}

void Describe(Command& ioRoot)
{
    ioRoot.Explains(
        "Results go to standard output, one a line; messages to standard error.\n"
        "Exit status: 0 done, found, yes; 1 not found, no; 2 wrong usage or an error.\n"
        "\"--\" ends the options: what follows may begin with \"-\". Numbers need none.\n"
        "\"kw4tools COMMAND --help\" tells more of a command, with an example.");
    ioRoot.Reads("ZOR_SETTINGS_PATH", "The directories of settings files (default: zor in\n"
                                      "XDG_CONFIG_HOME, else .config/zor in HOME)");
    ioRoot.Reads("ZOR_CATALOG_PATH", "The directories of message catalogs, before the\n"
                                     "installed one");
    ioRoot.Reads("LANGUAGE, LANG", "The languages of messages, with LC_ALL and\n"
                                   "LC_MESSAGES, as gettext takes them");
    ioRoot.Reads("ZOR_DICTIONARY_PATH", "The directories of dictionary files");
    ioRoot.Reads("LD_LIBRARY_PATH", "Where schema libraries are found");
    ioRoot.Reads("ZOR_PSN_TRACE_FILE", "The file for the method trace of --trace");
    ioRoot.Reads("VISUAL, EDITOR", "The editor of \"settings edit\" (default: vi)");
    ioRoot.Reads("NO_COLOR", "Set, and not empty: no colours on a terminal");
    ioRoot.Example("kw4tools find stdio.h /usr/local/include:/usr/include");
}

} // namespace

Program::Program()
    : _App(std::make_unique<CLI::App>(kPurpose, "kw4tools")), _Root(*_App),
      _Trace(_Root.Flag("--trace", "Write the method trace of the services to standard error, or\n"
                                   "to the end of the file that ZOR_PSN_TRACE_FILE names")),
      _Separator(_Root.Option("--separator", "S",
                              "The characters that separate the directories of a path list,\n"
                              "each by itself (default: \":\")"))
{
    _App->set_version_flag("--version", "kw4tools " KW4TOOLS_VERSION, kVersionHelp);
    _Root.Knows("--version", kVersionHelp);
    _App->set_help_flag("-h,--help", kHelpHelp);
    _Root.Knows("-h,--help", kHelpHelp);
    _App->get_formatter()->column_width(Command::kTextColumn);
    _App->get_formatter()->label("Positionals", "Arguments");
    _App->get_formatter()->label("SUBCOMMAND", "COMMAND");
    _App->fallthrough();
    Describe(_Root);
}

Program::~Program() = default;

Command& Program::Add(const std::string& iGroup, const std::string& iName,
                      const std::string& iPurpose)
{
    Command& command = _Root.Add(iName, iPurpose);
    _App->get_subcommand(iName)->group(iGroup);
    return command;
}

int Program::Run(const std::vector<std::string>& iArguments)
{
    try {
        return static_cast<int>(Perform(iArguments));
    } catch (const std::bad_alloc&) {
        return static_cast<int>(Tell("there is not enough memory; try again with less"));
    } catch (const std::exception& failure) {
        return static_cast<int>(Tell(failure.what()));
    }
}

Status Program::Perform(const std::vector<std::string>& iArguments)
{
    try {
        _App->parse(MarkedArguments(*_App, iArguments));
        return Start(_Root.Chosen());
    } catch (const CLI::CallForHelp&) {
        _Session.Out().Bytes(_App->help());
    } catch (const CLI::CallForVersion& version) {
        _Session.Out().Line(version.what());
    } catch (const CLI::RequiredError& error) {
        return TellWrongUsage(_Root.Chosen().IsFamily() ? "say which command" : error.what());
    } catch (const CLI::ExtrasError&) {
        return TellWrongUsage(TooMuch(_App->remaining(true)));
    } catch (const CLI::ParseError& error) {
        return TellWrongUsage(WithoutMarks(error.what()));
    } catch (const UsageError& error) {
        return TellWrongUsage(error.what(), error.Command());
    }
    _Session.Out().Flush();
    return Status::Yes;
}

// Runs the command; of the errors it raises the library has told already.
Status Program::Start(const Command& iCommand)
{
    if (_Trace)
        TurnServicesTraceOn();
    _Session.separator = _Separator;
    try {
        const Status status = iCommand.Run(_Session);
        _Session.Out().Flush();
        return status;
    } catch (const ZORRaisedError& raised) {
        return Tell(iCommand.Advice(raised.Error()));
    }
}

Status Program::TellWrongUsage(const std::string& iProblem, const std::string& iCommand) const
{
    const std::string command = iCommand.empty() ? FullName(_Root.Chosen().Parser()) : iCommand;
    return Tell(iProblem + "\nTry '" + command + " --help'.");
}
