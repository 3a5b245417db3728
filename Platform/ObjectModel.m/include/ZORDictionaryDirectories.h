#pragma once

#include "ZORExport.h"

#include <string>
#include <vector>

// Dictionary files tell which shared library implements an interface for a class, so that a program
// finds components it was never linked with. They are the files NAME.toml in the directories that
// the environment variable ZOR_DICTIONARY_PATH lists, separated by ":" (unset: there are none):
//
//     [[adapter]]
//     class     = "DUXSecurity"
//     interface = "ZORIDuxSecurity"
//     library   = "../lib/libSiteSecurity.so"
//     creator   = "CreateTIEZORIDuxSecurityDUXSecurity"      # this one may be left out
//
// - `class` is a class or a late type (see ZORObject.h). Its objects, and those of classes derived
//   from it, get the interface.
// - `library` without "/" is found by the loader; a relative path begins at the directory of the
//   file.
// - `creator` is the library's function `ZORBaseUnknown* NAME(ZORBaseUnknown*)`, of C++ or C
//   linkage, exported; the default is "CreateTIE", the interface and the class.
//
// The files are read when a query first finds no answer among loaded code for the object's own
// class, and never again; a library is loaded when its entry first answers a query, and stays. For
// one class, entries of loaded code go before those of files; of two entries in files the one read
// first counts: directories in the order of the list, in each of them the files in the order of
// their names.
//
// A mistake in a file is told on standard error in one line with file and line number, and the
// other entries work. A library that cannot be loaded, or has no such creator, is an error of the
// query: a ZORInternalError with file, line and the loader's text.

// What an administrator wants to see of them:
struct ZORDictionaryDirectory {
    std::string path; // as the environment names it
    // The names of the dictionary files in it, in the order they are read. Empty when the directory
    // is missing or may not be read.
    std::vector<std::string> names;
};

// The directories in their order; none when the variable names none. Reads the environment and the
// directories afresh. Thread rule: any thread, while none changes the environment.
ZOR_EXPORT std::vector<ZORDictionaryDirectory> ZORDictionaryDirectories();
