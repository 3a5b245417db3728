#include "Command.h"

#include "RawArguments.h"

#include <CLI/CLI.hpp>

namespace
{

constexpr std::size_t kTextColumn = Command::kTextColumn;

std::string Padded(const std::string& iName)
{
    constexpr std::size_t indent = 2;
    const std::size_t used = indent + iName.size();
    return iName + (used < kTextColumn ? std::string(kTextColumn - used, ' ') : " ");
}

std::string Indented(const std::string& iText)
{
    std::string indented;
    for (const char each : iText) {
        indented += each;
        if (each == '\n')
            indented.append(kTextColumn, ' ');
    }
    return indented;
}

} // namespace

Command& Command::Add(const std::string& iName, const std::string& iPurpose)
{
    _App.require_subcommand(1, 1);
    CLI::App* const app = _App.add_subcommand(iName, iPurpose);
    app->footer(""); // not the one of the command above, and no group of its either
    app->group("Commands");
    _Commands.push_back(std::make_unique<Command>(*app));
    return *_Commands.back();
}

const std::string& Command::Argument(const std::string& iName, const std::string& iHelp,
                                     Completion iCompletion)
{
    _Parameters.push_back({iName, "", iHelp, iCompletion, Parameter::Form::Required});
    std::string& argument = _Arguments.emplace_back();
    _App.add_option_function<std::string>(
            iName, [&argument](const std::string& iMarked) { argument = RawArgument(iMarked); },
            iHelp)
        ->required()
        ->option_text(" ");
    return argument;
}

const std::optional<std::string>& Command::OptionalArgument(const std::string& iName,
                                                            const std::string& iHelp)
{
    _Parameters.push_back({iName, "", iHelp, Completion::None, Parameter::Form::Optional});
    std::optional<std::string>& argument = _Options.emplace_back();
    _App.add_option_function<std::string>(
            iName, [&argument](const std::string& iMarked) { argument = RawArgument(iMarked); },
            iHelp)
        ->option_text(" ");
    return argument;
}

const std::vector<std::string>& Command::Arguments(const std::string& iName,
                                                   const std::string& iHelp, Completion iCompletion)
{
    _Parameters.push_back({iName, "", iHelp, iCompletion, Parameter::Form::Repeated});
    std::vector<std::string>& list = _Lists.emplace_back();
    _App.add_option_function<std::vector<std::string>>(
            iName,
            [&list](const std::vector<std::string>& iMarked) {
                for (const std::string& marked : iMarked)
                    list.push_back(RawArgument(marked));
            },
            iHelp)
        ->option_text("...");
    return list;
}

const bool& Command::Flag(const std::string& iNames, const std::string& iHelp)
{
    _Parameters.push_back({iNames, "", iHelp, Completion::None, Parameter::Form::Option});
    bool& flag = _Flags.emplace_back(false);
    _App.add_flag_callback(
            iNames, [&flag] { flag = true; }, iHelp)
        ->disable_flag_override();
    return flag;
}

const std::optional<std::string>& Command::Option(const std::string& iName,
                                                  const std::string& iValue,
                                                  const std::string& iHelp, Completion iCompletion)
{
    _Parameters.push_back({iName, iValue, iHelp, iCompletion, Parameter::Form::Option});
    std::optional<std::string>& option = _Options.emplace_back();
    _App.add_option_function<std::string>(
            iName, [&option](const std::string& iMarked) { option = RawArgument(iMarked); }, iHelp)
        ->type_name(iValue);
    return option;
}

void Command::Knows(const std::string& iNames, const std::string& iHelp)
{
    _Parameters.push_back({iNames, "", iHelp, Completion::None, Parameter::Form::Option});
}

const bool& Command::JsonFlag()
{
    return Flag("--json", "Print the result as a line of JSON instead");
}

void Command::UpdateFooter()
{
    std::string footer;
    const auto add = [&](const std::string& iText) {
        footer += (footer.empty() ? "" : "\n\n") + iText;
    };
    for (const std::string& each : _Explanations)
        add(each);
    if (!_Variables.empty())
        add("Environment:");
    for (const Variable& each : _Variables)
        footer += "\n  " + Padded(each.name) + Indented(each.help);
    for (const std::string& each : _Examples)
        add("Example:\n  " + each);
    _App.footer(footer);
}

Command& Command::Explains(const std::string& iText)
{
    _Explanations.push_back(iText);
    UpdateFooter();
    return *this;
}

Command& Command::Reads(const std::string& iVariable, const std::string& iHelp)
{
    _Variables.push_back({iVariable, iHelp});
    UpdateFooter();
    return *this;
}

Command& Command::Example(const std::string& iLine)
{
    _Examples.push_back(iLine);
    UpdateFooter();
    return *this;
}

Command& Command::Does(std::function<Status(Session&)> iAction)
{
    _Action = std::move(iAction);
    return *this;
}

Command& Command::Advises(std::function<std::string(ZORError&)> iAdvice)
{
    _Advice = std::move(iAdvice);
    return *this;
}

const Command& Command::Chosen() const
{
    for (const std::unique_ptr<Command>& command : _Commands)
        if (_App.got_subcommand(&command->_App))
            return command->Chosen();
    return *this;
}

std::string Command::Advice(ZORError& iError) const
{
    return _Advice ? _Advice(iError)
                   : "stopped by the error above; mend what it names and try again";
}

std::string Command::Name() const
{
    return _App.get_name();
}

std::string Command::Group() const
{
    return _App.get_group();
}

std::string Command::Purpose() const
{
    return _App.get_description();
}
