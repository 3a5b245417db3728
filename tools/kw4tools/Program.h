#pragma once

#include "Command.h"

#include <string>
#include <vector>

// The program: its commands, its common options, and how a run ends.
//
//     Program program;
//     AddPathCommands(program);
//     return program.Run(arguments);
class Program
{
public:
    Program();
    ~Program();

    // A command; commands of one group stand together in the help.
    Command& Add(const std::string& iGroup, const std::string& iName, const std::string& iPurpose);

    // The program itself as a command, with all others below it.
    const Command& Root() const { return _Root; }

    // Runs the command that the arguments (without the program's own name) ask for. Returns the
    // exit status.
    int Run(const std::vector<std::string>& iArguments);

private:
    Status Perform(const std::vector<std::string>& iArguments);
    Status Start(const Command& iCommand);
    Status TellWrongUsage(const std::string& iProblem, const std::string& iCommand = {}) const;

    std::unique_ptr<CLI::App> _App;
    Command _Root;
    const bool& _Trace;
    const std::optional<std::string>& _Separator;
    Session _Session;
};
