#include "ZORTie.h"

void TieConstructor(ZORBaseUnknown* iAdapter, ZORBaseUnknown* iObject, const GUID& /*iClass*/,
                    const GUID& iInterface)
{
    iAdapter->_Interface = QueryMetaObject(iInterface);
    iAdapter->SetImpl(iObject);
}
