#pragma once

#include "Session.h"
#include "Status.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
}
class ZORError;

// What an argument or the value of an option is, for those who complete it.
enum class Completion {
    None,
    File,
    SettingsFile,
    Setting, // of the settings file that is given before it
    Variable // of the environment
};

// A command of the program, or a family of them: its arguments, its help and what it does.
//
//     Command& env = program.Add("env", "Prints the directories …");
//     const std::string& variable = env.Argument("VARIABLE", "Name of the variable");
//     env.Example("kw4tools env PATH");
//     env.Does([&](Session& ioSession) { … return Status::Yes; });
//
// The references that the declaring functions return are filled in before the command runs; they
// live as long as the command. Arguments and values arrive byte for byte as they were given.
class Command
{
public:
    // The column that explanations of options and commands begin at in a help text.
    static constexpr std::size_t kTextColumn = 26;

    // `ioApp` belongs to the parser, which must outlive the command.
    explicit Command(CLI::App& ioApp) : _App(ioApp) {}
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    // What the command line of a command may hold besides its name: for the pages on the program.
    struct Parameter {
        std::string name;  // "NAME", "--path" or "-h,--help"
        std::string value; // of an option: what kind of value, nothing when it takes none
        std::string help;
        Completion completion;
        enum class Form { Required, Optional, Repeated, Option } form;

        bool IsOption() const { return form == Form::Option; }
    };

    // An environment variable that a command looks at.
    struct Variable {
        std::string name;
        std::string help;
    };

    // A command below this one.
    Command& Add(const std::string& iName, const std::string& iPurpose);

    // An argument that must be given. Arguments are taken in the order they are declared in.
    const std::string& Argument(const std::string& iName, const std::string& iHelp,
                                Completion iCompletion = Completion::None);
    // An argument that may be left out.
    const std::optional<std::string>& OptionalArgument(const std::string& iName,
                                                       const std::string& iHelp);
    // All further arguments; there may be none.
    const std::vector<std::string>& Arguments(const std::string& iName, const std::string& iHelp,
                                              Completion iCompletion = Completion::None);
    // An option that is given or not.
    const bool& Flag(const std::string& iNames, const std::string& iHelp);
    // An option with a value; `iValue` says what kind of value.
    const std::optional<std::string>& Option(const std::string& iName, const std::string& iValue,
                                             const std::string& iHelp,
                                             Completion iCompletion = Completion::None);
    // Tells of an option that the parser itself answers.
    void Knows(const std::string& iNames, const std::string& iHelp);
    // The option "--json": the result is to be printed as JSON.
    const bool& JsonFlag();

    // More than the purpose has to say; stands behind the options in the help.
    Command& Explains(const std::string& iText);
    // An environment variable that it looks at, and what for.
    Command& Reads(const std::string& iVariable, const std::string& iHelp);
    // A command line that shows the use, for the help.
    Command& Example(const std::string& iLine);
    // What the command does.
    Command& Does(std::function<Status(Session&)> iAction);
    // What to do when an error is raised, in words that follow "kw4tools: ".
    Command& Advises(std::function<std::string(ZORError&)> iAdvice);

    // The command that the command line names: this one or one below it.
    const Command& Chosen() const;
    Status Run(Session& ioSession) const { return _Action(ioSession); }
    std::string Advice(ZORError& iError) const;
    // Whether it is a family of commands, which does nothing by itself.
    bool IsFamily() const { return !_Commands.empty(); }
    const CLI::App& Parser() const { return _App; }

    // What the help is made of.
    std::string Name() const;
    std::string Group() const;
    std::string Purpose() const;
    const std::vector<std::unique_ptr<Command>>& Commands() const { return _Commands; }
    const std::vector<Parameter>& Parameters() const { return _Parameters; }
    const std::vector<std::string>& Explanations() const { return _Explanations; }
    const std::vector<Variable>& Variables() const { return _Variables; }
    const std::vector<std::string>& Examples() const { return _Examples; }

private:
    void UpdateFooter();

    CLI::App& _App;
    std::vector<std::unique_ptr<Command>> _Commands;
    std::vector<Parameter> _Parameters;
    std::vector<std::string> _Explanations;
    std::vector<Variable> _Variables;
    std::vector<std::string> _Examples;
    // Deques: what is in them stays where it is.
    std::deque<std::string> _Arguments;
    std::deque<std::vector<std::string>> _Lists;
    std::deque<bool> _Flags;
    std::deque<std::optional<std::string>> _Options;
    std::function<Status(Session&)> _Action;
    std::function<std::string(ZORError&)> _Advice;
};
