#pragma once

#include "ZORHandle.h"
#include "ZORRaisedError.h"

#include <gtest/gtest.h>

// The framework error that a call raises, as the catcher gets it; null, and a failed test, when it
// raises none.
template <class Call>
ZORHandle<ZORError> RaisedBy(Call iCall)
{
    try {
        iCall();
    } catch (const ZORRaisedError& raised) {
        return &raised.Error();
    }
    ADD_FAILURE() << "nothing was raised";
    return nullptr;
}
