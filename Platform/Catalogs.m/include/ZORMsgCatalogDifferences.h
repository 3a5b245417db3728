#pragma once

#include "ZORExport.h"

#include <string>
#include <vector>

// What differs between the locales of a catalog: a check for those who translate it.
//
//     for (const std::string& each : ZORMsgCatalogDifferences("ZORDUXCdaErrorMsg"))
//         std::puts(each.c_str());
//
// The lines, sorted by key and then by locale:
//
//     CDA_W_0001.Long is missing in fr
//     CDA_W_0002.Short has no place {2} in de
//     CDA_W_0003.Short is not a text in default
//
// A key is missing where other locales have it. A place is missing where the text of another locale
// has it. All directories of the search are taken together, earlier ones first, whatever locale the
// user has; texts for all are called "default". A locale with a territory, such as fr_CA, need not
// repeat what its language has.
//
// Returns nothing when all is well. Raises a ZORMsgError when there is no such catalog (the name
// may not be null), or one of its files cannot be read or is damaged.
// Thread rule: any thread, while none changes the environment.
ZOR_EXPORT std::vector<std::string> ZORMsgCatalogDifferences(const char* iCatalog);
