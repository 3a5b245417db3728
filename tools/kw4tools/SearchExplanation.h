#pragma once

#include "Colours.h"
#include "Json.h"
#include "TraceRecording.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a search for a file tried and found, told from the method trace that it wrote:
//
//     looking for plate.model
//     along the search path (DUX_SEARCH_PATH in DUXAdmin):
//       $HOME gives /home/u/models
//       not there  /site/models/plate.model
//       found      /home/u/models/plate.model
//
// Every place that was tried stands there once, in the order of the tries.
class SearchExplanation
{
public:
    // `iLines` are the lines of one SearchPath, from its beginning on; they may end early, when an
    // error ended the search.
    explicit SearchExplanation(const std::vector<TraceRecording::Line>& iLines);

    void Write(std::ostream& ioStream, const Colours& iColours) const;
    // The stages as an array of objects: {"stage":…,"notes":[…],"places":[{"path":…,"found":…}]}.
    Json Stages() const;

private:
    // A part of the search: what is to be said about it, and the places where it looked. A stage
    // that found the file found it at the last of them.
    struct Stage {
        const char* title;
        std::vector<std::string> notes;
        std::vector<std::string> places;
        bool found = false;

        // A search may look nowhere: beside a name without a directory, say.
        bool IsEmpty() const { return notes.empty() && places.empty(); }
        bool IsHit(const std::string& iPlace) const { return found && &iPlace == &places.back(); }
    };

    static Json AsJson(const Stage& iStage);
    void ReadSearchPath(std::string_view iMessage);
    void ReadGetSetting(std::string_view iMessage);
    void ReadSeekFile(std::string_view iMessage);
    void NoteUnsetVariable();
    void Begin(const char* iTitle);
    void Note(const std::string& iText);

    std::string _FileName;
    std::optional<std::string> _BaseName; // once it is known
    std::optional<std::string> _Reading;  // the entry whose setting is being read; empty: the path
    std::optional<std::string> _Variable; // named in an entry, as long as its value is not known
    std::vector<Stage> _Stages;
};
