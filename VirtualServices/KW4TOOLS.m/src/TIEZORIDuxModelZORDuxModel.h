#pragma once

#include "ZORDuxModel.h"
#include "ZORTie.h"

// Shows ZORIDuxModel on a ZORDuxModel.
class TIEZORIDuxModelZORDuxModel final : public ZORIDuxModel
{
    ZOR_DECLARE_TIE(ZORIDuxModel, ZORDuxModel)
public:
    ZORIContainer_var GetContainer() override;
    ZORUnicodeString GetModelType() override;
    ZORUnicodeString GetSchema() override;
};

// A new adapter on a ZORDuxModel, for the dictionary.
ZORBaseUnknown* CreateTIEZORIDuxModelZORDuxModel(ZORBaseUnknown* iObject);
