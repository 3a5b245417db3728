#include "TIELifeCycleObjectZORDuxServices.h"

ZOR_IMPLEMENT_TIE(LifeCycleObject, ZORDuxServices, ZORKindCorbaTie)

void TIELifeCycleObjectZORDuxServices::remove()
{
    Self()->remove();
}
