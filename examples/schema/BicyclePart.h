#pragma once

#include "ZORClass.h"

// What every part of a bicycle can tell. Programs ask for it by its name and need nothing of the
// library that implements it:
//
//     ZORBaseUnknown* part = object->QueryInterface("BicyclePart");
class BicyclePart : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // How many of this part a bicycle has.
    virtual int GetCount() = 0;
};
