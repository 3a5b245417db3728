#pragma once

#include "ZORExport.h"

// Loads the schema library "lib" + schema + ".so" and returns what its creation function, the
// "fctCreate" + schema that it exports with C linkage and without arguments, returns. The library
// stays loaded; a later call runs the function again.
//
//     void* schema = ZORLoadExternalSchema("AP214", nullptr);
//
// - `iSchema`: the name of the schema; null counts as empty.
// - `iLibraryPath`: the file of the library, taken as it is; null searches for it with SearchLib.
//
// Raises ZORDuxServicesMsg:
// - 0x20003 (library file) when the search finds none;
// - 0x20003 (path) when the loader refuses it, for which "Can't open library -->…reason =…", with
//   the loader's text, is also written to standard error;
// - 0x20004 (path, function) when it has no such function; "Can't find symbol -->…reason =…" is
//   written and the library closed again.
// What the creation function raises goes on to the caller. Returns null when there is no memory for
// the names. Thread rule: no thread may change the environment meanwhile.
ZOR_EXPORT void* ZORLoadExternalSchema(const char* iSchema, const char* iLibraryPath);
