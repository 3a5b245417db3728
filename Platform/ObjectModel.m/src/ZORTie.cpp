#include "ZORTie.h"

void TieConstructor(ZORBaseUnknown* iAdapter, ZORBaseUnknown* iObject, const GUID& /*iClass*/,
                    const GUID& iInterface)
{
    // The class of an adapter is derived from the interface: that is quicker asked than found.
    const ZORMetaClass* const parent = iAdapter->GetMetaObject()->GetParent();
    const bool shown = parent && parent->HasClassId() && parent->GetClassId() == iInterface;
    iAdapter->_Interface = shown ? parent : QueryMetaObject(iInterface);
    iAdapter->SetImpl(iObject);
}

bool ZORIsOfClass(const ZORBaseUnknown* iObject, const ZORMetaClass* iClass)
{
    if (!iObject)
        return false;
    const ZORMetaClass* meta = iObject->GetImpl()->GetMetaObject();
    while (meta && meta != iClass)
        meta = meta->GetParent();
    return meta != nullptr;
}
