#pragma once

#include "ZORMetaClass.h"

#include <string>
#include <vector>

// The classes that support the interface, in the order of the chain.
inline std::vector<std::string> Supported(const char* iInterface)
{
    std::vector<std::string> names;
    for (const ZORSupportedClass* each = ZORMetaClass::ListOfSupportedClass(iInterface); each;
         each = each->next)
        names.emplace_back(each->className);
    return names;
}
