#include "TIEZORIDuxModelZORDuxModel.h"

ZOR_IMPLEMENT_TIE(ZORIDuxModel, ZORDuxModel, ZORKindTie)

static const ZORFillDictionary entry("ZORDuxModel", "ZORIDuxModel",
                                     CreateTIEZORIDuxModelZORDuxModel);

ZORIContainer_var TIEZORIDuxModelZORDuxModel::GetContainer()
{
    return ZORIContainer_var(Self());
}

ZORUnicodeString TIEZORIDuxModelZORDuxModel::GetModelType()
{
    return Self()->GetModelType();
}

ZORUnicodeString TIEZORIDuxModelZORDuxModel::GetSchema()
{
    return Self()->GetSchema();
}
