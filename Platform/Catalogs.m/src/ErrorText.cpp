#include "ErrorText.h"

#include "CatalogLookup.h"

#include <cstdio>
#include <exception>

std::string ErrorText(const char* iClass, unsigned int iId, const char* iBuiltIn)
{
    try {
        char tag[2 * sizeof iId + 1];
        std::snprintf(tag, sizeof tag, "%x", iId);
        CatalogLookup catalog(iClass);
        for (const std::string& key : {std::string(tag), std::string(tag) + ".Short"})
            if (const std::string* const text = catalog.Find(key))
                return *text;
    } catch (const std::exception&) {
    }
    return iBuiltIn;
}
