#include "ZshCompletion.h"

#include "CompletionWords.h"

#include <algorithm>
#include <ostream>

namespace
{

// The function that completes behind a command.
std::string FunctionName(const std::string& iFullName)
{
    std::string name = "_kw4tools" + (iFullName.empty() ? "" : "_" + iFullName);
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

// The first line of a text, inside an argument of _arguments and single quotes.
std::string Message(const std::string& iText)
{
    std::string message;
    for (const char each : iText.substr(0, iText.find('\n'))) {
        if (each == '[' || each == ']' || each == ':' || each == '\\')
            message += '\\';
        message += each == '\'' ? "'\\''" : std::string(1, each);
    }
    return message;
}

const char* Action(Completion iCompletion)
{
    switch (iCompletion) {
    case Completion::File:
        return "_files";
    case Completion::SettingsFile:
        return "_kw4tools_of_settings_file";
    case Completion::Setting:
        return "_kw4tools_of_setting";
    case Completion::Variable:
        return "_parameters -g \"*export*\"";
    default:
        return " ";
    }
}

void WriteOption(const Command::Parameter& iOption, std::ostream& ioStream)
{
    for (const std::string& name : OptionNames(iOption)) {
        const bool takesValue = !iOption.value.empty(); // behind a blank or "="
        ioStream << " \\\n        '" << name << (takesValue ? "=[" : "[") << Message(iOption.help)
                 << "]";
        if (takesValue)
            ioStream << ':' << iOption.value << ':' << Action(iOption.completion);
        ioStream << "'";
    }
}

void WriteArgument(const Command::Parameter& iArgument, int iPosition, std::ostream& ioStream)
{
    const bool repeated = iArgument.form == Command::Parameter::Form::Repeated;
    const bool optional = iArgument.form == Command::Parameter::Form::Optional;
    ioStream << " \\\n        '" << (repeated ? "*" : std::to_string(iPosition))
             << (optional ? "::" : ":") << iArgument.name << ':' << Action(iArgument.completion)
             << "'";
}

void WriteCommandChoice(const Command& iCommand, const std::string& iFullName,
                        std::ostream& ioStream)
{
    ioStream << " \\\n        '1:command:->command' '*::argument:->argument'\n"
             << "    case $state in\n    command)\n        local -a commands=(";
    for (const auto& each : iCommand.Commands())
        ioStream << "\n            '" << each->Name() << ':' << Message(each->Purpose()) << "'";
    ioStream << ")\n        _describe command commands\n        ;;\n    argument)\n"
             << "        (( $+functions[" << FunctionName(iFullName) << "_$line[1]] )) && "
             << FunctionName(iFullName) << "_$line[1]\n        ;;\n    esac\n";
}

void WriteFunction(const Command& iCommand, const std::string& iFullName, const Command& iRoot,
                   std::ostream& ioStream)
{
    ioStream << '\n' << FunctionName(iFullName) << "() {\n";
    if (iCommand.IsFamily())
        ioStream << "    local curcontext=\"$curcontext\" state line\n";
    ioStream << "    _arguments -s" << (iCommand.IsFamily() ? " -C" : "");
    int position = 0;
    for (const Command::Parameter& each : iCommand.Parameters())
        if (each.IsOption())
            WriteOption(each, ioStream);
        else
            WriteArgument(each, ++position, ioStream);
    if (&iCommand != &iRoot)
        for (const Command::Parameter& each : iRoot.Parameters())
            WriteOption(each, ioStream);
    if (iCommand.IsFamily())
        WriteCommandChoice(iCommand, iFullName, ioStream);
    else
        ioStream << '\n';
    ioStream << "}\n";
}

constexpr char kHead[] = R"zsh(#compdef kw4tools
# zsh completion for kw4tools, made from its help

# The settings files by their names, and any file by its path.
_kw4tools_of_settings_file() {
    local -a files=(${(f)"$(_call_program settings-files kw4tools status 2>/dev/null |
        sed -n 's|^settings file: .*/\([^/]*\)\.toml$|\1|p')"})
    compadd -a files
    [[ $PREFIX == */* ]] && _files
}

# The settings of the file that is the first argument.
_kw4tools_of_setting() {
    local file=${(Q)line[1]} # what the shell will make of it
    [[ $file != '~/'* ]] || file=$HOME/${file#'~/'}
    local -a names=(${(f)"$(_call_program settings kw4tools settings list -- ${(q)file} 2>/dev/null)"})
    compadd -a names
}
)zsh";

} // namespace

void WriteZshCompletion(const Command& iRoot, std::ostream& ioStream)
{
    ioStream << kHead;
    ForEachCommand(iRoot, "", [&](const Command& iCommand, const std::string& iFullName) {
        WriteFunction(iCommand, iFullName, iRoot, ioStream);
    });
    ioStream << "\n_kw4tools \"$@\"\n";
}
