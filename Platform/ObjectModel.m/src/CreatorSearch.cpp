#include "CreatorSearch.h"

#include "DeclaredAdapter.h"
#include "DictionaryFiles.h"
#include "Registry.h"

ZORCreator FindCreator(const ZORMetaClass* iClass, const ZORMetaClass* iInterface)
{
    const Registry& registry = Registry::Instance();
    Registry::Found found = registry.FindCreator(iClass, iInterface);
    if (found.creator && !found.ofAncestor)
        return found.creator;
    if (ReadDictionaryFiles())
        found = registry.FindCreator(iClass, iInterface);
    return found.declared ? found.declared->GetCreator() : found.creator;
}
