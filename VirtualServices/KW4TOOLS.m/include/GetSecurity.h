#pragma once

#include "ZORIDuxSecurity.h"

// Makes the security component: an object of the late type "DUXSecurity" that another library
// implements and the dictionary leads to (see ZORDictionaryDirectories.h). The handle is its only
// owner; every call makes another one. A null handle means that nobody implements it.
//
//     if (ZORIDuxSecurity_var found = GetSecurity())
//         std::puts(found->IsAllowed("ann", "change", "plate") ? "yes" : "no");
//
// An error on the way, such as a library that cannot be loaded, goes on to the caller; one of the
// ZORError family is told on standard error before. Opens no trace scope. Thread rule: any thread.
ZOR_EXPORT ZORIDuxSecurity_var GetSecurity();
