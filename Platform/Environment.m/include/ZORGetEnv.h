#pragma once

#include "ZORExport.h"

// The value of an environment variable, or null when it is not set (or the name is null).
//
//     if (const char* home = ZORGetEnv("HOME"))
//         std::puts(home);
//
// A set but empty variable gives the empty text. The text belongs to the environment: it is valid
// until the variable is changed, and must not be written to. Thread rule: no thread may change the
// environment meanwhile.
ZOR_EXPORT const char* ZORGetEnv(const char* iName);
