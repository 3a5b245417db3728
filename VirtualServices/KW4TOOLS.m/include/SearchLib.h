#pragma once

#include "ZORExport.h"

// Finds a library file: the name as it stands (a relative one from the current directory), else in
// the directories of LD_LIBRARY_PATH in their order, empty ones skipped. Returns the path it exists
// under, as built of these parts, in memory that the caller frees with free(); null when there is
// none, the name is null or there is no memory. Only existence is tested: what is found may be no
// library, or a directory. Raises nothing.
//
//     char* path = SearchLib("libAP214.so");
//
// Thread rule: no thread may change the environment meanwhile.
ZOR_EXPORT char* SearchLib(const char* iLibrary);
