#include "GuardedBlock.h"

#include "ZORDuxServicesMsg.h"

#include <iostream>

void ReportAndRaiseAgain(ErrorReport iForm, ZORError& iError)
{
    if (iForm == ErrorReport::Long && iError.IsAKindOf(ZORDuxServicesMsg::ClassName())) {
        iError.PrintHistory(std::cerr);
    } else if (iError.IsAKindOf(ZORError::ClassName())) {
        iError.Display(1, std::cerr);
        iError.PrintHistory(std::cerr);
    }
    iError.Throw(nullptr, 0);
}
