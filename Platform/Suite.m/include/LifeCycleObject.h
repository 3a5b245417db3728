#pragma once

#include "ZORClass.h"
#include "ZORHandle.h"

// The life-cycle interface of CORBA objects (CORBA Life Cycle Service,
// CosLifeCycle::LifeCycleObject), as far as the suite uses it. The services component offers it.
//
//     LifeCycleObject_var life(services);
//     life->remove();
//
// The order of the operations is part of the binary interface.
// Thread rule: one thread at a time for one object.
class ZOR_EXPORT LifeCycleObject : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // For the classes that implement the interface.
    LifeCycleObject();
    ~LifeCycleObject() override;

    // Ends the object's life, if its class gives that a meaning; a reference held stays valid.
    virtual void remove() = 0;
};

// A handle on it.
using LifeCycleObject_var = ZORHandle<LifeCycleObject>;
