#include "ZORDuxNotification.h"

ZORDuxNotification::ZORDuxNotification(void* iObject, void* iData)
    : ZORNotification(0), _Object(iObject), _Data(iData)
{
}

ZORDuxNotification::~ZORDuxNotification() = default;

void* ZORDuxNotification::Object() const
{
    return _Object;
}

void* ZORDuxNotification::Data() const
{
    return _Data;
}
