#include "ZORTie.h"

void TieConstructor(ZORBaseUnknown* iAdapter, ZORBaseUnknown* iObject, const GUID& /*iClass*/,
                    const GUID& iInterface)
{
    iAdapter->_Interface = QueryMetaObject(iInterface);
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
