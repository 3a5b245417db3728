// search: a file along the administrator's search path.

#include "Commands.h"
#include "Program.h"
#include "SearchExplanation.h"

#include <iostream>

namespace
{

ZORUnicodeString Explained(ZORIDuxServices& ioServices, const std::string& iName)
{
    // Told when the search is over, also when an error ends it.
    struct Telling {
        TraceRecording recording;
        ~Telling()
        {
            recording.Stop();
            SearchExplanation(recording.Lines()).Write(std::cerr);
        }
    } const telling;
    return ioServices.SearchPath(Text(iName));
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
    search.Explains(
        "Tries the last part of the name in the directories of the setting\n"
        "DUX_SEARCH_PATH of the settings file DUXAdmin, then in the directory that the\n"
        "name gives, then in the current one. Prints the path it found first; exit\n"
        "status 1 when it found none. In the setting, \"$NAME\" is an environment\n"
        "variable and an entry \"$$NAME\" another setting of DUXAdmin.");
    search.Example("kw4tools search plate.model --explain");
    search.Advises([] {
        return "the search path cannot be read: mend the setting DUX_SEARCH_PATH, or the settings "
               "file DUXAdmin, as the message above says";
    });
    search.Does([&](Session& ioSession) {
        ZORIDuxServices& services = ioSession.Services();
        const ZORUnicodeString found =
            explain ? Explained(services, name) : services.SearchPath(Text(name));
        if (!found.IsEmpty())
            ioSession.Out().Line(View(found));
        return YesIf(!found.IsEmpty());
    });
}
