#include "BashCompletion.h"

#include "CompletionWords.h"

#include <ostream>

namespace
{

const char* Kind(Completion iCompletion)
{
    switch (iCompletion) {
    case Completion::File:
        return "file";
    case Completion::SettingsFile:
        return "settings_file";
    case Completion::Setting:
        return "setting";
    case Completion::Variable:
        return "variable";
    default:
        return "nothing";
    }
}

// The words that may follow the command: its commands and options; which options take a value, and
// of what kind that and the arguments are.
void WriteWords(const Command& iCommand, const std::string& iFullName, std::ostream& ioStream)
{
    std::string commands, options, values, arguments;
    for (const auto& each : iCommand.Commands())
        commands += (commands.empty() ? "" : " ") + each->Name();
    for (const Command::Parameter& each : iCommand.Parameters()) {
        if (!each.IsOption()) {
            const bool repeated = each.form == Command::Parameter::Form::Repeated;
            arguments += (arguments.empty() ? "" : " ") + std::string(Kind(each.completion)) +
                         (repeated ? "..." : "");
            continue;
        }
        for (const std::string& name : OptionNames(each)) {
            options += (options.empty() ? "" : " ") + name;
            if (!each.value.empty())
                values += ' ' + name + '=' + Kind(each.completion);
        }
    }
    ioStream << "    '" << iFullName << "')\n        commands='" << commands
             << "'\n        options='" << options << "'\n        values='" << values
             << "'\n        arguments='" << arguments << "'\n        ;;\n";
}

constexpr char kHead[] = R"bash(# bash completion for kw4tools, made from its help

# What may follow a command: sets commands, options, values and arguments.
_kw4tools_words() {
    commands='' options='' values='' arguments=''
    case $1 in
)bash";

constexpr char kTail[] = R"bash(    esac
}

# What a word stands for, once the shell has read it: sets plain, and quote when it begins with one.
_kw4tools_read() {
    plain=$1 quote=''
    [[ $1 != [\'\"]* ]] || quote=${1:0:1} plain=${1:1}
    plain=${plain%"$quote"}
    [[ $quote == "'" ]] || IFS= read -d '' plain <<<"$plain" # takes the backslashes away
    plain=${plain%$'\n'}
}

# Offers the lines of standard input that begin with the current word, as the shell reads them.
_kw4tools_lines() {
    local line quoted
    while IFS= read -r line; do
        [[ $line == "$current"* ]] || continue
        case $quote in
        "'") quoted=$line ;;
        '"') quoted=$(sed 's/[\\"$`]/\\&/g' <<<"$line") ;;
        *) printf -v quoted %q "$line" ;;
        esac
        COMPREPLY+=("$quoted")
    done
}

# Offers what an argument or the value of an option may be.
_kw4tools_values() {
    local kind=$1 program=${2-} file=${3-}
    case $kind in
    settings_file)
        _kw4tools_lines < <("$program" status 2>/dev/null |
            sed -n 's|^settings file: .*/\([^/]*\)\.toml$|\1|p')
        [[ $current != */* ]] || _kw4tools_values file
        ;;
    setting)
        _kw4tools_lines < <("$program" settings list -- "$file" 2>/dev/null)
        ;;
    variable)
        mapfile -t COMPREPLY < <(compgen -A export -- "$current")
        ;;
    file)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        ;;
    esac
}

_kw4tools() {
    local program=$1 current plain quote
    local commands options values arguments command='' first='' count=0 over='' wanted='' word i
    COMPREPLY=()
    _kw4tools_words ''
    local global_options=$options global_values=$values
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ -n $wanted ]]; then
            [[ $word == = ]] || wanted='' # the shell splits --option=value in three
        elif [[ -z $over && $word == -- ]]; then
            over=yes
        elif [[ -z $over && $word == -?* ]]; then
            [[ "$global_values $values " != *" $word="* ]] || wanted=$word
        elif [[ " $commands " == *" $word "* ]]; then
            command+=${command:+ }$word
            _kw4tools_words "$command"
        else
            ((count++)) || first=$word
        fi
    done
    _kw4tools_read "$first"
    [[ $first != '~/'* ]] || plain=$HOME/${plain#'~/'}
    first=$plain
    _kw4tools_read "${COMP_WORDS[COMP_CWORD]}"
    current=$plain
    [[ -z $wanted || $current != = ]] || current=''
    local kind
    if [[ -n $wanted ]]; then
        kind=${global_values}${values}
        kind=${kind##* "$wanted"=}
        _kw4tools_values "${kind%% *}" "$program"
    elif [[ -z $over && $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options $global_options" -- "$current" | sort -u)
    elif [[ -n $commands ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current")
    else
        # The last kind stands for all further arguments when it is repeated.
        local kinds
        read -ra kinds <<<"$arguments"
        kind=${kinds[count]-}
        [[ -n $kind || ${#kinds[@]} -eq 0 || ${kinds[-1]} != *... ]] || kind=${kinds[-1]}
        _kw4tools_values "${kind%...}" "$program" "$first"
    fi
}

complete -F _kw4tools kw4tools
)bash";

} // namespace

void WriteBashCompletion(const Command& iRoot, std::ostream& ioStream)
{
    ioStream << kHead;
    ForEachCommand(iRoot, "", [&](const Command& iCommand, const std::string& iFullName) {
        WriteWords(iCommand, iFullName, ioStream);
    });
    ioStream << kTail;
}
