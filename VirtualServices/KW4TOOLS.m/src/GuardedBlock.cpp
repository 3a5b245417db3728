#include "GuardedBlock.h"

#include "ZORDuxServicesMsg.h"

#include <iostream>

namespace
{

void Report(ErrorReport iForm, ZORError& iError)
{
    if (iForm == ErrorReport::Long && iError.IsAKindOf(ZORDuxServicesMsg::ClassName())) {
        iError.PrintHistory(std::cerr);
    } else if (iError.IsAKindOf(ZORError::ClassName())) {
        std::cerr << iError.GetMessage(1) << std::endl;
        iError.PrintHistory(std::cerr);
    }
}

} // namespace

void ReportAndRaiseAgain(ErrorReport iForm, ZORError& iError)
{
    try {
        Report(iForm, iError);
    } catch (...) { // no memory to tell it: the error itself still goes on
    }
    iError.Throw(nullptr, 0);
}
