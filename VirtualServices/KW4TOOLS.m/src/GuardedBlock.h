#pragma once

#include "ZORXHContext.h"

// What a guarded block tells on standard error of an error that passes it.
enum class ErrorReport {
    Short, // of the ZORError family: message and history
    Long,  // the same, but of a ZORDuxServicesMsg the history alone
};

// Tells the error as the form says and raises it again.
void ReportAndRaiseAgain(ErrorReport iForm, ZORError& iError);

// Runs `iBody` and returns its result. A framework error is reported and goes on to the caller; an
// error whose Throw returns ends here, with an empty result. Other exceptions pass untouched.
template <class Body>
auto Guarded(ErrorReport iForm, Body&& iBody) -> decltype(iBody())
{
    ZORXHContext context;
    try {
        return iBody();
    } catch (const ZORRaisedError& raised) {
        ReportAndRaiseAgain(iForm, context.Catch(raised));
    }
    return decltype(iBody())();
}
