#pragma once

#include "ZORClass.h"
#include "ZORHandle.h"

// The life-cycle interface of CORBA objects (CORBA Life Cycle Service,
// CosLifeCycle::LifeCycleObject), as far as the suite uses it.
class ZOR_EXPORT LifeCycleObject : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    LifeCycleObject();
    ~LifeCycleObject() override;

    // Ends the object's life, if its class gives that a meaning; a reference held stays valid.
    virtual void remove() = 0;
};

using LifeCycleObject_var = ZORHandle<LifeCycleObject>;
