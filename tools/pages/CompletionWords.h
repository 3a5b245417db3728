#pragma once

#include "Command.h"

#include <string>
#include <vector>

// What the completions for all shells are made of.

// The names of an option: "-h,--help" are two.
std::vector<std::string> OptionNames(const Command::Parameter& iOption);

// Calls the function for the command and all below it, with the full name below the root
// ("settings get"; empty for the root).
template <class Visit>
void ForEachCommand(const Command& iCommand, const std::string& iFullName, Visit iVisit)
{
    iVisit(iCommand, iFullName);
    for (const auto& each : iCommand.Commands())
        ForEachCommand(*each, iFullName + (iFullName.empty() ? "" : " ") + each->Name(), iVisit);
}
