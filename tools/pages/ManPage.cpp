#include "ManPage.h"

#include <algorithm>
#include <cctype>
#include <ostream>

namespace
{

std::string EscapedCharacter(char iCharacter)
{
    switch (iCharacter) {
    case '\\':
        return "\\e";
    case '-':
        return "\\-";
    case '\'':
        return "\\(aq";
    case '`':
        return "\\(ga";
    case '^':
        return "\\(ha";
    case '~':
        return "\\(ti";
    default:
        return std::string(1, iCharacter);
    }
}

// The text as roff prints it: nothing in it is a request or an escape, and what has a fairer form
// in print stays as it is typed, so that it can be copied from the page.
std::string Escaped(const std::string& iText)
{
    std::string escaped;
    bool beginsLine = true;
    for (const char each : iText) {
        if (beginsLine && each == '.')
            escaped += "\\&";
        escaped += EscapedCharacter(each);
        beginsLine = each == '\n';
    }
    return escaped;
}

std::string Bold(const std::string& iText)
{
    return "\\fB" + Escaped(iText) + "\\fR";
}

std::string Italic(const std::string& iText)
{
    return "\\fI" + Escaped(iText) + "\\fR";
}

// "-h,--help" as "-h, --help", each in bold.
std::string OptionNames(const std::string& iNames)
{
    const std::size_t comma = iNames.find(',');
    if (comma == std::string::npos)
        return Bold(iNames);
    return Bold(iNames.substr(0, comma)) + ", " + OptionNames(iNames.substr(comma + 1));
}

std::string UpperCase(std::string iText)
{
    std::transform(iText.begin(), iText.end(), iText.begin(),
                   [](unsigned char each) { return static_cast<char>(std::toupper(each)); });
    return iText;
}

class ManPage
{
public:
    ManPage(const Command& iRoot, std::ostream& ioStream) : _Root(iRoot), _Stream(ioStream) {}

    void Write(const std::string& iVersion)
    {
        const std::string name = _Root.Name();
        Line(".TH " + UpperCase(name) + " 1 \"\" \"" + name + " " + iVersion + "\"");
        Line(".ad l");
        Line(".nh");
        Section("NAME");
        Line(Escaped(name) + " \\- settings, search paths and other common services of the suite");
        Section("SYNOPSIS");
        Line(Bold(name) + " [" + Italic("OPTIONS") + "] " + Italic("COMMAND") + " ...");
        Section("DESCRIPTION");
        Line(Escaped(_Root.Purpose()));
        WriteExplanations(_Root);
        Section("OPTIONS");
        WriteParameters(_Root);
        Section("COMMANDS");
        WriteCommands();
        Section("ENVIRONMENT");
        for (const Command::Variable& each : _Root.Variables())
            Item(Bold(each.name), each.help);
        Section("EXAMPLES");
        WriteExamples(_Root);
    }

private:
    void Line(const std::string& iLine) { _Stream << iLine << '\n'; }
    void Section(const std::string& iTitle) { Line(".SH " + iTitle); }
    void Item(const std::string& iTag, const std::string& iText)
    {
        Line(".TP");
        Line(iTag);
        Line(Escaped(iText));
    }

    void WriteExplanations(const Command& iCommand)
    {
        for (const std::string& each : iCommand.Explanations()) {
            Line(".PP");
            Line(Escaped(each));
        }
    }

    void WriteParameters(const Command& iCommand)
    {
        for (const Command::Parameter& each : iCommand.Parameters()) {
            const std::string value = each.value.empty() ? "" : " " + Italic(each.value);
            Item(each.IsOption() ? OptionNames(each.name) + value : Italic(each.name), each.help);
        }
    }

    void WriteExamples(const Command& iCommand)
    {
        for (const std::string& each : iCommand.Examples()) {
            Line(".PP");
            Line(".EX");
            Line("  " + Escaped(each));
            Line(".EE");
        }
    }

    // The commands, group after group.
    void WriteCommands()
    {
        std::string group;
        for (const auto& each : _Root.Commands()) {
            if (each->Group() != group)
                Line(".SS " + each->Group());
            group = each->Group();
            WriteCommand(*each, each->Name());
        }
    }

    void WriteCommand(const Command& iCommand, const std::string& iFullName)
    {
        Line(".TP");
        Line(Usage(iCommand, iFullName));
        Line(Escaped(iCommand.Purpose()) + ".");
        Line(".RS");
        WriteParameters(iCommand);
        WriteExplanations(iCommand);
        WriteExamples(iCommand);
        Line(".RE");
        for (const auto& each : iCommand.Commands())
            WriteCommand(*each, iFullName + " " + each->Name());
    }

    static std::string Usage(const Command& iCommand, const std::string& iFullName)
    {
        std::string usage = Bold(iFullName);
        for (const Command::Parameter& each : iCommand.Parameters())
            if (each.IsOption())
                usage += " [" + OptionNames(each.name) +
                         (each.value.empty() ? "" : " " + Italic(each.value)) + "]";
        for (const Command::Parameter& each : iCommand.Parameters())
            if (!each.IsOption())
                usage += ' ' + Argument(each);
        return usage + (iCommand.IsFamily() ? ' ' + Italic("COMMAND") + " ..." : "");
    }

    static std::string Argument(const Command::Parameter& iArgument)
    {
        switch (iArgument.form) {
        case Command::Parameter::Form::Optional:
            return "[" + Italic(iArgument.name) + "]";
        case Command::Parameter::Form::Repeated:
            return "[" + Italic(iArgument.name) + " ...]";
        default:
            return Italic(iArgument.name);
        }
    }

    const Command& _Root;
    std::ostream& _Stream;
};

} // namespace

void WriteManPage(const Command& iRoot, const std::string& iVersion, std::ostream& ioStream)
{
    ManPage(iRoot, ioStream).Write(iVersion);
}
