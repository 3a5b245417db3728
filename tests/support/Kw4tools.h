#pragma once

#include "RunProgram.h"
#include "ScopedDirectory.h"

#include <string>
#include <vector>

// The program kw4tools on a site of its own: an empty directory for its settings and files, in
// which it runs, and none of the test's variables that it looks at.
class Kw4tools
{
public:
    using Arguments = std::vector<std::string>;
    using Outcome = RunProgram::Outcome;

    Kw4tools() : _Run(KW4TOOLS_PROGRAM)
    {
        _Run.In(_Site.Path()).Environment("ZOR_SETTINGS_PATH", _Site.Path());
        for (const char* name :
             {"ZOR_PSN_TRACE", "ZOR_PSN_TRACE_FILE", "ZOR_PSN_TRACE_CALLS", "ZOR_CATALOG_PATH",
              "ZOR_DICTIONARY_PATH", "ZOR_TRACE", "LD_LIBRARY_PATH", "XDG_CONFIG_HOME", "LANGUAGE",
              "LC_ALL", "LC_MESSAGES", "LANG", "NO_COLOR", "VISUAL"})
            _Run.Environment(name, std::nullopt);
        _Run.Environment("EDITOR", "false"); // no test waits for a person
    }

    Outcome operator()(const Arguments& iArguments) const { return _Run(iArguments); }
    // Standard output of a run that must succeed; else how it failed.
    std::string Result(const Arguments& iArguments) const
    {
        const Outcome outcome = _Run(iArguments);
        return outcome.status == 0
                   ? outcome.out
                   : "status " + std::to_string(outcome.status) + ": " + outcome.err;
    }

    RunProgram& Run() { return _Run; }
    const ScopedDirectory& Site() const { return _Site; }

private:
    ScopedDirectory _Site;
    RunProgram _Run;
};
