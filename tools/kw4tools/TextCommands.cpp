// text: the word and string functions, each a command below it.

#include "Commands.h"
#include "Failure.h"
#include "Number.h"
#include "Program.h"
#include "ZORDuxStrings.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

namespace
{

char SingleCharacter(const std::string& iName, const std::string& iText)
{
    if (iText.size() > 1)
        throw UsageError(iName + " is '" + iText +
                         "': it must be one single-byte character, or empty for a NUL");
    return iText.empty() ? '\0' : iText.front();
}

// An argument of a string function, made of the text given for it.
template <class Parameter>
class Value
{
public:
    Value(const std::string& iName, const std::string& iText) : _Text(iText)
    {
        if constexpr (std::is_same_v<Parameter, unsigned>)
            _Plain = UnsignedNumber(iName, iText);
        else if constexpr (std::is_same_v<Parameter, int>)
            _Plain = WholeNumber(iName, iText);
        else if constexpr (std::is_same_v<Parameter, char>)
            _Plain = SingleCharacter(iName, iText);
    }
    Parameter Pass()
    {
        if constexpr (std::is_pointer_v<Parameter>)
            return _Text.data();
        else
            return _Plain;
    }

private:
    std::string _Text; // a copy, which the function may change
    Parameter _Plain{};
};

// Who gives back the text that a function returns.
enum class Returns { New, Shared };

Status Print(Session& ioSession, char* iResult, Returns iReturns)
{
    const std::unique_ptr<char, decltype(&std::free)> owner(
        iReturns == Returns::New ? iResult : nullptr, std::free);
    if (!iResult)
        return Status::No;
    ioSession.Out().Line(iResult);
    return Status::Yes;
}

Status Print(Session& ioSession, const char* iResult, Returns)
{
    ioSession.Out().Line(iResult);
    return Status::Yes;
}

Status Print(Session& ioSession, char iResult, Returns)
{
    ioSession.Out().Line({&iResult, 1});
    return Status::Yes;
}

template <class Number>
Status Print(Session& ioSession, Number iResult, Returns)
{
    ioSession.Out().Line(std::to_string(iResult));
    return Status::Yes;
}

// What the help says of a parameter.
struct Parameter {
    const char* name;
    const char* help;
};

constexpr Parameter kText = {"TEXT", "The text"};

class TextFamily
{
public:
    explicit TextFamily(Program& ioProgram)
        : _Text(ioProgram.Add("Text", "text", "Cut, pad, search and split text")),
          _Separator(_Text.Option("--wsep", "C", "The character between words (default: a blank)"))
    {
        _Text.Explains("Each COMMAND is a function of the library; positions count bytes from 1.\n"
                       "Exit status 1, and nothing printed, for a null result. Characters are\n"
                       "single bytes; an empty argument for one is the NUL.");
        _Text.Example("kw4tools text --wsep , word 'plate,bracket,bolt' 2");
    }

    template <class Result, class... Parameters>
    void Add(const char* iName, const char* iPurpose, Result (*iFunction)(Parameters...),
             const std::array<Parameter, sizeof...(Parameters)>& iParameters, const char* iExample,
             Returns iReturns = Returns::New)
    {
        Command& command = _Text.Add(iName, iPurpose);
        std::vector<Given> given;
        given.reserve(iParameters.size());
        for (const Parameter& parameter : iParameters)
            given.push_back({parameter.name, &command.Argument(parameter.name, parameter.help)});
        command.Example(std::string("kw4tools text ") + iName + " " + iExample);
        command.Does([&separator = _Separator, given, iFunction, iReturns](Session& ioSession) {
            UseSeparator(separator);
            return Call(ioSession, iFunction, given, iReturns,
                        std::index_sequence_for<Parameters...>());
        });
    }

    // The one function that gives two results: its count, and the changed text.
    void AddSwap()
    {
        Command& command = _Text.Add("cswap", "Replace a character in a text, and count how often");
        const std::string& from = command.Argument("FROM", "The character to replace");
        const std::string& to = command.Argument("TO", "What replaces it");
        const std::string& text = command.Argument(kText.name, kText.help);
        const std::string& start = command.Argument("START", "The first position");
        command.Explains("Prints how many were replaced, and the text on a line of its own.");
        command.Example("kw4tools text cswap a b banana 3");
        command.Does([&](Session& ioSession) {
            std::string changed = text;
            const unsigned count = cswap(SingleCharacter("FROM", from), SingleCharacter("TO", to),
                                         changed.data(), UnsignedNumber("START", start));
            ioSession.Out().Line(std::to_string(count));
            ioSession.Out().Line(changed.c_str());
            return Status::Yes;
        });
    }

private:
    struct Given {
        const char* name;
        const std::string* text;
    };

    static void UseSeparator(const std::optional<std::string>& iSeparator)
    {
        if (iSeparator)
            setwsep(SingleCharacter("--wsep", *iSeparator));
    }

    template <class Result, class... Parameters, std::size_t... kIndex>
    static Status Call(Session& ioSession, Result (*iFunction)(Parameters...),
                       const std::vector<Given>& iGiven, Returns iReturns,
                       std::index_sequence<kIndex...>)
    {
        std::tuple<Value<Parameters>...> values(
            Value<Parameters>(iGiven[kIndex].name, *iGiven[kIndex].text)...);
        return Print(ioSession, iFunction(std::get<kIndex>(values).Pass()...), iReturns);
    }

    Command& _Text;
    const std::optional<std::string>& _Separator;
};

constexpr Parameter kWords = {"TEXT", "The words, with separators between them"};
constexpr Parameter kNumber = {"NUMBER", "The word's number, counted from 1"};

void AddPositions(TextFamily& ioText)
{
    ioText.Add("insert", "Put a text into another", insert,
               {{{"WHAT", "What is put in"},
                 {"INTO", "Where it is put in"},
                 {"AFTER", "Behind how many characters"}}},
               "XY abc 1");
    ioText.Add("left", "The first characters of a text", left,
               {{kText, {"COUNT", "How many characters"}}}, "abcdef 3");
    ioText.Add("overly", "Write a text over a part of another", overly,
               {{{"WHAT", "What is written"},
                 {"TARGET", "What it is written over"},
                 {"AT", "The position of its first character"}}},
               "XY abcd 2");
    ioText.Add("pad", "Lengthen a text with a character", pad,
               {{kText, {"COUNT", "The length of the result"}, {"FILL", "The character"}}},
               "ab 4 '*'");
    ioText.Add("pos", "The position of a text in another; 0 when it is not there", pos,
               {{{"NEEDLE", "What is looked for"},
                 {"HAY", "Where it is looked for"},
                 {"START", "The first position it may have"}}},
               "cd abcdcd 4");
    ioText.Add("right", "The last characters of a text", right,
               {{kText, {"COUNT", "How many characters"}}}, "abcdef 3", Returns::Shared);
    ioText.Add(
        "substr", "Characters out of a text", substr,
        {{kText, {"START", "The position of the first one"}, {"COUNT", "How many characters"}}},
        "abcdef 2 3");
}

void AddCharacters(TextFamily& ioText)
{
    ioText.AddSwap();
    ioText.Add("lower", "A text in lower case", lower, {{kText}}, "ABC", Returns::Shared);
    ioText.Add("qstrip", "A text without the blanks at its ends", qstrip, {{kText}}, "' abc '",
               Returns::Shared);
    ioText.Add("strip", "A text without a character at its ends", strip,
               {{kText,
                 {"MODE", "L: leading ones; B: leading ones or, if there are none, trailing\n"
                          "ones; any other: trailing ones"},
                 {"CHARACTER", "The character"}}},
               "xxabc L x");
    ioText.Add("upper", "A text in upper case", upper, {{kText}}, "abc", Returns::Shared);
}

void AddWords(TextFamily& ioText)
{
    ioText.Add("getwsep", "The character between words", getwsep,
               {{{"WHICH", "The current one, or for a negative number the one before"}}}, "0");
    ioText.Add("setwsep", "Set the character between words, and print it", setwsep,
               {{{"CHARACTER", "The character"}}}, ",");
    ioText.Add("subword", "Words out of a text", subword,
               {{kWords, {"FIRST", "The number of the first one"}, {"COUNT", "How many words"}}},
               "'plate bracket bolt' 2 2");
    ioText.Add("word", "A word of a text", word, {{kWords, kNumber}}, "'plate bracket bolt' 2");
    ioText.Add("wordlen", "The length of a word; 0 when it is not there", wordlen,
               {{kWords, kNumber}}, "'plate bracket bolt' 2");
    ioText.Add("wordpos", "The number of a word in a text; 0 when it is not there", wordpos,
               {{{"WORD", "The word"}, kWords, {"START", "The first number it may have"}}},
               "bolt 'plate bracket bolt' 1");
    ioText.Add("xword", "A word of a text, cut to 255 characters", xword, {{kWords, kNumber}},
               "'plate bracket bolt' 2", Returns::Shared);
}

} // namespace

void AddTextCommands(Program& ioProgram)
{
    TextFamily family(ioProgram);
    AddPositions(family);
    AddCharacters(family);
    AddWords(family);
}
