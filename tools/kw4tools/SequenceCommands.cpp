// ids, interval: lists of identifiers and effectivity intervals.

#include "Commands.h"
#include "Failure.h"
#include "IdentifierList.h"
#include "IntervalDrawing.h"
#include "Json.h"
#include "Number.h"
#include "Program.h"
#include "ZORConfigServices.h"

namespace
{

const char kGroup[] = "Configuration";
const char kListHelp[] = "A file, one hexadecimal identifier a line; \"-\" for standard input";
const char kIdentifierHelp[] = "Two hexadecimal digits for each octet; may be empty";

std::vector<std::string> Identifiers(const _SEQUENCE_CORBAAny& iList)
{
    std::vector<std::string> identifiers;
    for (int i = 0; i < iList.length(); ++i) {
        _SEQUENCE_octet identifier;
        iList[i] >> identifier;
        identifiers.push_back(HexadecimalPairs(identifier, ""));
    }
    return identifiers;
}

void PrintList(Session& ioSession, const _SEQUENCE_CORBAAny& iList, bool iAsJson)
{
    const std::vector<std::string> identifiers = Identifiers(iList);
    if (iAsJson)
        ioSession.Out().Line(Json::ArrayOf(identifiers).Text());
    else
        for (const std::string& each : identifiers)
            ioSession.Out().Line(each);
}

Status PrintTest(Session& ioSession, bool iSo, bool iAsJson)
{
    ioSession.Out().Line(iAsJson ? Json(iSo).Text() : iSo ? "1" : "0");
    return YesIf(iSo);
}

void AddUnique(Command& ioIds)
{
    Command& unique = ioIds.Add("unique", "Print a list without what comes again later in it");
    const std::string& file = unique.Argument("LIST", kListHelp, Completion::File);
    const bool& json = unique.JsonFlag();
    unique.Explains("Of each identifier the last occurrence is printed.");
    unique.Example("kw4tools ids unique parts.txt");
    unique.Does([&](Session& ioSession) {
        _SEQUENCE_CORBAAny list = ReadIdentifiers(file);
        RemoveDuplicate(list);
        PrintList(ioSession, list, json);
        return Status::Yes;
    });
}

using Combination = _SEQUENCE_CORBAAny (*)(_SEQUENCE_CORBAAny&, _SEQUENCE_CORBAAny&);

void AddCombination(Command& ioIds, const char* iName, const char* iPurpose,
                    Combination iCombination)
{
    Command& command = ioIds.Add(iName, iPurpose);
    const std::string& first = command.Argument("A", kListHelp, Completion::File);
    const std::string& second = command.Argument("B", "Another list", Completion::File);
    const bool& json = command.JsonFlag();
    command.Explains("In the order of A, and as often as they stand there.");
    command.Example(std::string("kw4tools ids ") + iName + " wanted.txt known.txt");
    command.Does([&first, &second, &json, iCombination](Session& ioSession) {
        if (first == "-" && second == "-")
            throw UsageError("only one of the lists can be standard input");
        _SEQUENCE_CORBAAny firstList = ReadIdentifiers(first);
        _SEQUENCE_CORBAAny secondList = ReadIdentifiers(second);
        PrintList(ioSession, iCombination(firstList, secondList), json);
        return Status::Yes;
    });
}

void AddContains(Command& ioIds)
{
    Command& contains = ioIds.Add("contains", "Tell whether an identifier stands in a list");
    const std::string& file = contains.Argument("LIST", kListHelp, Completion::File);
    const std::string& identifier = contains.Argument("ID", kIdentifierHelp);
    const bool& json = contains.JsonFlag();
    contains.Explains("Prints 1 (exit status 0) or 0 (exit status 1); as JSON, true or false.");
    contains.Example("kw4tools ids contains parts.txt 1f80");
    contains.Does([&](Session& ioSession) {
        CORBAAny wanted;
        wanted << ParsedIdentifier("ID", identifier);
        _SEQUENCE_CORBAAny list = ReadIdentifiers(file);
        return PrintTest(ioSession, AlreadyExist(list, wanted) != 0, json);
    });
}

void AddEqual(Command& ioIds)
{
    Command& equal = ioIds.Add("equal", "Tell whether two identifiers are the same");
    const std::string& first = equal.Argument("ID", kIdentifierHelp);
    const std::string& second = equal.Argument("OTHER", kIdentifierHelp);
    const bool& json = equal.JsonFlag();
    equal.Explains("Prints 1 (exit status 0) or 0 (exit status 1); as JSON, true or false.");
    equal.Example("kw4tools ids equal 1f80 1F80");
    equal.Does([&](Session& ioSession) {
        const int equals =
            SequenceIsEqual(ParsedIdentifier("ID", first), ParsedIdentifier("OTHER", second));
        return PrintTest(ioSession, equals != 0, json);
    });
}

constexpr int kOpenEnd = -1; // the library's mark for an interval without an end

// An interval given as START:END or, without an end, START.
DrawnInterval ParsedInterval(const std::string& iName, const std::string& iText)
{
    try {
        const std::size_t colon = iText.find(':');
        DrawnInterval interval{WholeNumber(iName, iText.substr(0, colon)), std::nullopt};
        if (colon != std::string::npos)
            interval.end = WholeNumber(iName, iText.substr(colon + 1));
        return interval;
    } catch (const UsageError& error) {
        throw UsageError(error.what() + std::string("; an interval is START:END or START"));
    }
}

_SEQUENCE_CORBAAny Sequence(const DrawnInterval& iInterval)
{
    _SEQUENCE_CORBAAny sequence;
    const int count = iInterval.end ? 2 : 1;
    sequence.maximum(count);
    sequence.length(count);
    sequence[0] << iInterval.start;
    if (iInterval.end)
        sequence[1] << *iInterval.end;
    return sequence;
}

DrawnInterval Drawn(DrawnInterval iInterval)
{
    if (iInterval.end == kOpenEnd)
        iInterval.end.reset();
    return iInterval;
}

struct Comparison {
    int code;
    std::optional<std::vector<int>> values; // nothing: the result was left untouched
};

Comparison Compare(const DrawnInterval& iFirst, const DrawnInterval& iSecond, int iStep)
{
    _SEQUENCE_CORBAAny first = Sequence(iFirst);
    _SEQUENCE_CORBAAny second = Sequence(iSecond);
    _SEQUENCE_CORBAAny result;
    result.maximum(1);
    result.length(1); // an empty any, which no comparison writes
    Comparison comparison{SequenceInterval(first, second, result, iStep), std::nullopt};
    if (result.length() == 1 && result[0].type() == CORBAAny::kEmpty)
        return comparison;
    comparison.values.emplace(static_cast<std::size_t>(result.length()));
    for (int i = 0; i < result.length(); ++i)
        result[i] >> (*comparison.values)[static_cast<std::size_t>(i)];
    return comparison;
}

std::string ResultLine(const Comparison& iComparison)
{
    std::string line = "result";
    if (!iComparison.values)
        return line + " untouched";
    for (const int value : *iComparison.values)
        line += ' ' + std::to_string(value);
    return line;
}

Json AsJson(const DrawnInterval& iInterval)
{
    return Json::Object()
        .Add("start", iInterval.start)
        .Add("end", iInterval.end ? Json(*iInterval.end) : Json(nullptr));
}

std::string AsJson(const Comparison& iComparison, const std::vector<DrawnInterval>& iPieces)
{
    Json result = nullptr;
    if (iComparison.values)
        result = Json::ArrayOf(*iComparison.values);
    return Json::Object()
        .Add("code", iComparison.code)
        .Add("result", result)
        .Add("pieces",
             Json::ArrayOf(iPieces, [](const DrawnInterval& each) { return AsJson(each); }))
        .Text();
}

void AddInterval(Program& ioProgram)
{
    Command& interval = ioProgram.Add(kGroup, "interval", "Compare two effectivity intervals");
    const std::string& first = interval.Argument("FIRST", "START:END, or START without an end");
    const std::string& second = interval.Argument("SECOND", "The interval to compare with");
    const std::optional<std::string>& step =
        interval.Option("--step", "N", "Distance of neighbouring values (default: 1)");
    const bool& draw =
        interval.Flag("--draw", "Also draw both intervals and the pieces not common to both");
    const bool& json = interval.JsonFlag();
    interval.Explains("Prints \"code N\", how the intervals lie to each other, and \"result\" with "
                      "the\nstarts and ends of the pieces that are not common to both; \"result\" "
                      "alone\nwhen there are none, \"result untouched\" when the library writes "
                      "none.\nAn end of -1 is no end. As JSON: {\"code\":2,\"result\":[1,2,6,10],"
                      "\n\"pieces\":[{\"start\":1,\"end\":2},{\"start\":6,\"end\":10}]}; an "
                      "untouched\nresult and no end are null.");
    interval.Example("kw4tools interval 1:10 3:5 --draw");
    interval.Does([&](Session& ioSession) {
        if (draw && json)
            throw UsageError("--draw is for people and --json for programs: give one of them");
        const DrawnInterval left = ParsedInterval("FIRST", first);
        const DrawnInterval right = ParsedInterval("SECOND", second);
        const Comparison comparison = Compare(left, right, step ? WholeNumber("--step", *step) : 1);
        const std::vector<DrawnInterval> pieces =
            PiecesOf(comparison.code, comparison.values.value_or(std::vector<int>()));
        if (json) {
            ioSession.Out().Line(AsJson(comparison, pieces));
            return Status::Yes;
        }
        ioSession.Out().Line("code " + std::to_string(comparison.code));
        ioSession.Out().Line(ResultLine(comparison));
        if (draw)
            ioSession.Out().Bytes(DrawIntervals(Drawn(left), Drawn(right), pieces));
        return Status::Yes;
    });
}

} // namespace

void AddSequenceCommands(Program& ioProgram)
{
    AddInterval(ioProgram);
    Command& ids = ioProgram.Add(kGroup, "ids", "Work on lists of identifiers");
    ids.Explains(
        "A list is a file with one identifier a line: two hexadecimal digits for each\n"
        "octet, upper or lower case, blanks allowed; an empty line is the empty\n"
        "identifier. \"-\" reads the list from standard input. As JSON a list is an array\n"
        "of strings, and the answer of a test true or false.");
    ids.Example("kw4tools ids subtract wanted.txt known.txt");
    AddUnique(ids);
    AddCombination(ids, "intersect", "Print what two lists have in common",
                   SequenceCrbAnyIntersection);
    AddCombination(ids, "subtract", "Print what stands in the first list alone",
                   SequenceCrbAnySubstraction);
    AddContains(ids);
    AddEqual(ids);
}
