// search: a file along the administrator's search path.

#include "Commands.h"
#include "Program.h"
#include "SearchExplanation.h"
#include "SearchPathAdvice.h"

#include <iostream>
#include <unistd.h>

namespace
{

// Records a search, and tells of it when it is over, also when an error ends it.
class Explanation
{
public:
    explicit Explanation(bool iIsPrinted) : _IsPrinted(iIsPrinted) {}
    ~Explanation()
    {
        _Recording.Stop();
        if (_IsPrinted)
            SearchExplanation(_Recording.Lines()).Write(std::cerr, Colours(STDERR_FILENO));
    }
    Explanation(const Explanation&) = delete;
    Explanation& operator=(const Explanation&) = delete;

    Json Stages()
    {
        _Recording.Stop();
        return SearchExplanation(_Recording.Lines()).Stages();
    }

private:
    const bool _IsPrinted;
    TraceRecording _Recording;
};

std::string AsJson(const std::string& iName, const ZORUnicodeString& iFound,
                   std::optional<Explanation>& ioExplanation)
{
    Json result = Json::Object();
    result.Add("name", iName);
    result.Add("path", iFound.IsEmpty() ? Json(nullptr) : Json(View(iFound)));
    if (ioExplanation)
        result.Add("stages", ioExplanation->Stages());
    return result.Text();
}

} // namespace

void AddSearchCommand(Program& ioProgram)
{
    Command& search =
        ioProgram.Add("Finding files", "search", "Find a file along the site's search path");
    const std::string& name = search.Argument("NAME", "The file's name; a directory before it is "
                                                      "tried too");
    const bool& explain =
        search.Flag("--explain", "Also print every place that was tried, in order and with its\n"
                                 "verdict, on standard error");
    const bool& json = search.JsonFlag();
    search.Explains(
        "Tries the last part of the name in the directories of the setting\n"
        "DUX_SEARCH_PATH of the settings file DUXAdmin, then in the directory that the\n"
        "name gives, then in the current one. Prints the path it found first; exit\n"
        "status 1 when it found none. In the setting, \"$NAME\" is an environment\n"
        "variable and an entry \"$$NAME\" another setting of DUXAdmin.\n"
        "As JSON: {\"name\":NAME,\"path\":PATH}, the path null when there is none; with\n"
        "--explain, \"stages\" in it holds what was tried.");
    search.Example("kw4tools search plate.model --explain");
    search.Advises(SearchPathAdvice);
    search.Does([&](Session& ioSession) {
        ZORIDuxServices& services = ioSession.Services();
        std::optional<Explanation> explanation;
        if (explain)
            explanation.emplace(!json);
        const ZORUnicodeString found = services.SearchPath(Text(name));
        if (json) {
            ioSession.Out().Line(AsJson(name, found, explanation));
            return YesIf(!found.IsEmpty());
        }
        explanation.reset(); // told before the result
        if (!found.IsEmpty())
            ioSession.Out().Line(View(found));
        return YesIf(!found.IsEmpty());
    });
}
