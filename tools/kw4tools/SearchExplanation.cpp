#include "SearchExplanation.h"

#include <ostream>

namespace
{

// Takes the label off a message that begins with it.
bool TakeLabel(std::string_view& ioMessage, std::string_view iLabel)
{
    if (ioMessage.substr(0, iLabel.size()) != iLabel)
        return false;
    ioMessage.remove_prefix(iLabel.size());
    return true;
}

} // namespace

SearchExplanation::SearchExplanation(const std::vector<TraceRecording::Line>& iLines)
{
    for (const TraceRecording::Line& line : iLines)
        if (const auto search = line.Of("ZORDuxServices::SearchPath"))
            ReadSearchPath(*search);
        else if (const auto setting = line.Of("ZORDuxServices::GetSetting"))
            ReadGetSetting(*setting);
        else if (const auto seek = line.Of("ZORDuxServices::SeekFile"))
            ReadSeekFile(*seek);
    if (_Reading)
        Note((_Reading->empty() ? "it" : *_Reading) + " cannot be read");
}

void SearchExplanation::ReadSearchPath(std::string_view iMessage)
{
    if (TakeLabel(iMessage, "New shell Path: ")) {
        Note("$" + _Variable.value_or("") + " gives " + std::string(iMessage));
        _Variable.reset();
        return;
    }
    NoteUnsetVariable();
    if (TakeLabel(iMessage, "iFileName = ")) {
        _FileName = iMessage;
    } else if (TakeLabel(iMessage, "RelativeName = ")) {
        if (_BaseName)
            _Stages.back().found = true; // said again by the search in the current directory
        else
            _BaseName = iMessage;
    } else if (TakeLabel(iMessage, "Decode setting Path: ")) {
        _Reading = iMessage;
    } else if (TakeLabel(iMessage, "Shell = ")) {
        _Variable = iMessage;
    } else if (iMessage == "Analyze by DUX_SEARCH_PATH: Begin") {
        Begin("along the search path (DUX_SEARCH_PATH in DUXAdmin)");
        _Reading = "";
    } else if (iMessage == "Analyze argument PATH : Begin") {
        Begin("in the directory that the name gives");
    } else if (iMessage == "Analyze in Local Directory : Begin") {
        Begin("in the current directory");
        _Stages.back().places.push_back(*_BaseName);
    } else if (TakeLabel(iMessage, "GoodPath = ") && !iMessage.empty()) {
        _Stages.back().found = true;
        _Stages.back().places.pop_back(); // SeekFile names the place of its hit once more
    }
}

void SearchExplanation::ReadGetSetting(std::string_view iMessage)
{
    if (!TakeLabel(iMessage, "retour = "))
        return;
    const std::string entry = _Reading.value_or("");
    if (iMessage.empty())
        Note((entry.empty() ? "it" : entry) + " is empty or not set");
    else if (!entry.empty())
        Note(entry + " gives " + std::string(iMessage));
    _Reading.reset();
}

void SearchExplanation::ReadSeekFile(std::string_view iMessage)
{
    NoteUnsetVariable();
    if (TakeLabel(iMessage, "Path = "))
        _Stages.back().places.push_back(std::string(iMessage) + "/" + *_BaseName);
}

void SearchExplanation::NoteUnsetVariable()
{
    if (_Variable)
        Note("$" + *_Variable + " is empty or not set, and stays as it is");
    _Variable.reset();
}

void SearchExplanation::Begin(const char* iTitle)
{
    _Stages.push_back({iTitle, {}, {}, false});
}

void SearchExplanation::Note(const std::string& iText)
{
    _Stages.back().notes.push_back(iText);
}

void SearchExplanation::Write(std::ostream& ioStream, const Colours& iColours) const
{
    ioStream << "looking for " << _FileName << '\n';
    for (const Stage& stage : _Stages) {
        if (stage.IsEmpty())
            continue;
        ioStream << stage.title << ":\n";
        for (const std::string& note : stage.notes)
            ioStream << "  " << note << '\n';
        for (const std::string& place : stage.places)
            ioStream << "  "
                     << (stage.IsHit(place) ? iColours.Good("found    ")
                                            : iColours.Doubtful("not there"))
                     << "  " << place << '\n';
    }
    if (_Reading)
        ioStream << iColours.Bad("an error ended the search") << '\n';
    else if (_Stages.empty() || !_Stages.back().found)
        ioStream << iColours.Bad("not found") << '\n';
    ioStream.flush();
}

Json SearchExplanation::Stages() const
{
    Json stages = Json::Array();
    for (const Stage& stage : _Stages)
        if (!stage.IsEmpty())
            stages.Add(AsJson(stage));
    return stages;
}

Json SearchExplanation::AsJson(const Stage& iStage)
{
    const Json places = Json::ArrayOf(iStage.places, [&](const std::string& each) {
        return Json::Object().Add("path", each).Add("found", iStage.IsHit(each));
    });
    return Json::Object()
        .Add("stage", iStage.title)
        .Add("notes", Json::ArrayOf(iStage.notes))
        .Add("places", places);
}
