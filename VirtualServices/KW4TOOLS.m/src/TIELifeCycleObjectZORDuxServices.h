#pragma once

#include "LifeCycleObject.h"
#include "ZORDuxServices.h"
#include "ZORTie.h"

// Shows the CORBA life-cycle interface on a ZORDuxServices.
class TIELifeCycleObjectZORDuxServices final : public LifeCycleObject
{
    ZOR_DECLARE_TIE(LifeCycleObject, ZORDuxServices)
public:
    void remove() override;
};

// A new adapter on a ZORDuxServices, for the dictionary.
ZORBaseUnknown* CreateTIELifeCycleObjectZORDuxServices(ZORBaseUnknown* iObject);
