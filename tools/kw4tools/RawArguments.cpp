#include "RawArguments.h"

#include "Failure.h"
#include "NearestName.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <set>

namespace
{

constexpr char kMark = '\x01';

std::string Marked(const std::string& iArgument)
{
    return kMark + iArgument;
}

// The option of that name that the command or one above it has, or null.
const CLI::Option* FindOption(const CLI::App* iCommand, const std::string& iName)
{
    for (; iCommand; iCommand = iCommand->get_parent())
        if (const CLI::Option* const option = iCommand->get_option_no_throw(iName))
            return option;
    return nullptr;
}

const CLI::App* FindCommand(const CLI::App& iCommand, const std::string& iName)
{
    const auto found = iCommand.get_subcommands(
        [&](const CLI::App* iCandidate) { return iCandidate->get_name() == iName; });
    return found.empty() ? nullptr : found.front();
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& iCommand)
{
    return iCommand.get_subcommands([](const CLI::App*) { return true; });
}

bool HasCommands(const CLI::App& iCommand)
{
    return !CommandsOf(iCommand).empty();
}

// The command of that name, however far below; null when there is none.
const CLI::App* FindBelow(const CLI::App& iCommand, const std::string& iName)
{
    if (const CLI::App* const found = FindCommand(iCommand, iName))
        return found;
    for (const CLI::App* const each : CommandsOf(iCommand))
        if (const CLI::App* const found = FindBelow(*each, iName))
            return found;
    return nullptr;
}

const CLI::App& ProgramOf(const CLI::App& iCommand)
{
    const CLI::App* const above = iCommand.get_parent();
    return above ? ProgramOf(*above) : iCommand;
}

std::string DidYouMean(const std::string& iName)
{
    return iName.empty() ? "" : " (did you mean '" + iName + "'?)";
}

// For a name that no command below `iCommand` has: one of that name elsewhere, or one spelt nearly
// so.
std::string SuggestedCommand(const CLI::App& iCommand, const std::string& iName)
{
    if (const CLI::App* const elsewhere = FindBelow(ProgramOf(iCommand), iName))
        return DidYouMean(FullName(*elsewhere));
    std::vector<std::string> names;
    for (const CLI::App* const each : CommandsOf(iCommand))
        names.push_back(each->get_name());
    const std::string nearest = NearestName(iName, names);
    return DidYouMean(nearest.empty() ? "" : FullName(iCommand) + " " + nearest);
}

// For a name that no option of the command, or of one above it, has.
std::string SuggestedOption(const CLI::App* iCommand, const std::string& iName)
{
    std::vector<std::string> names;
    for (; iCommand; iCommand = iCommand->get_parent())
        for (const CLI::Option* const each : iCommand->get_options())
            names.insert(names.end(), each->get_lnames().begin(), each->get_lnames().end());
    const std::size_t dashes = std::min(iName.find_first_not_of('-'), iName.size());
    const std::string nearest = NearestName(iName.substr(dashes), names);
    return DidYouMean(nearest.empty() ? "" : "--" + nearest);
}

bool LooksLikeOption(const CLI::App& iCommand, const std::string& iArgument)
{
    if (iArgument.size() < 2 || iArgument[0] != '-')
        return false;
    return !std::isdigit(static_cast<unsigned char>(iArgument[1])) ||
           FindOption(&iCommand, iArgument);
}

// Walks over the arguments of a command line and marks what has to be.
class Marking
{
public:
    explicit Marking(const CLI::App& iProgram) : _Command(&iProgram) {}

    std::vector<std::string> Mark(const std::vector<std::string>& iArguments)
    {
        for (_Next = iArguments.begin(); _Next != iArguments.end();) {
            const std::string& argument = *_Next++;
            if (!_OptionsOver && argument == "--")
                _OptionsOver = true;
            else if (!_OptionsOver && LooksLikeOption(*_Command, argument))
                MarkOption(argument, iArguments.end());
            else if (HasCommands(*_Command))
                MarkCommand(argument);
            else
                _Marked.push_back(Marked(argument));
        }
        return std::move(_Marked);
    }

private:
    using Position = std::vector<std::string>::const_iterator;

    void MarkOption(const std::string& iArgument, Position iEnd)
    {
        const std::size_t equals = iArgument.find('=');
        const std::string name = iArgument.substr(0, equals);
        const CLI::Option* const option = FindOption(_Command, name);
        if (!option)
            throw UsageError("there is no option '" + name + "'" + SuggestedOption(_Command, name) +
                                 "; if it is an argument, put \"--\" before it",
                             FullName(*_Command));
        const bool takesValue = option->get_items_expected_max() > 0;
        if (!takesValue && equals != std::string::npos)
            throw UsageError(name + " takes no value", FullName(*_Command));
        if (takesValue && equals == std::string::npos && _Next == iEnd)
            throw UsageError(name + " needs a value", FullName(*_Command));
        if (takesValue && !_Given.insert(option).second)
            throw UsageError(name + " is given twice", FullName(*_Command));
        _Marked.push_back(name);
        if (equals != std::string::npos)
            _Marked.push_back(Marked(iArgument.substr(equals + 1)));
        else if (takesValue)
            _Marked.push_back(Marked(*_Next++));
    }

    void MarkCommand(const std::string& iArgument)
    {
        const CLI::App* const command = FindCommand(*_Command, iArgument);
        if (!command)
            throw UsageError("there is no command '" + iArgument + "'" +
                                 SuggestedCommand(*_Command, iArgument),
                             FullName(*_Command));
        _Marked.push_back(iArgument);
        _Command = command;
    }

    const CLI::App* _Command;
    Position _Next;
    bool _OptionsOver = false;
    std::set<const CLI::Option*> _Given; // of those that take a value
    std::vector<std::string> _Marked;
};

} // namespace

std::vector<std::string> MarkedArguments(const CLI::App& iProgram,
                                         const std::vector<std::string>& iArguments)
{
    std::vector<std::string> marked = Marking(iProgram).Mark(iArguments);
    std::reverse(marked.begin(), marked.end());
    return marked;
}

std::string FullName(const CLI::App& iCommand)
{
    const CLI::App* const above = iCommand.get_parent();
    return (above ? FullName(*above) + " " : "") + iCommand.get_name();
}

std::string RawArgument(const std::string& iMarked)
{
    return iMarked.substr(!iMarked.empty() && iMarked.front() == kMark ? 1 : 0);
}

std::string WithoutMarks(std::string iMessage)
{
    iMessage.erase(std::remove(iMessage.begin(), iMessage.end(), kMark), iMessage.end());
    return iMessage;
}
