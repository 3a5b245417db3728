#pragma once

#include <string>
#include <vector>

// What the system's loader tells of a shared library.
struct LoaderTrace {
    std::string refusal;                       // why it does not take the file; empty: it does
    std::vector<std::string> libraries;        // the files of the libraries it needs
    std::vector<std::string> missingLibraries; // names of those that are not found
    std::vector<std::string> missingSymbols;   // linkage names, without repetition
};

// Has the loader open the library in a child process, with immediate binding and among the
// libraries of this program, and runs nothing of it. `iPath` contains a "/". Raises a
// std::runtime_error when the loader itself cannot be run.
LoaderTrace TraceLoader(const std::string& iPath);
