#pragma once

#include "GuardedBlock.h"
#include "ZORObject.h"

// A new component of a late type that another library of the suite implements, by the interface of
// the handle; a null handle when none does.
template <class Handle>
Handle CompanionComponent(const char* iLateType)
{
    return Guarded(ErrorReport::Short, [iLateType] {
        const auto object = ZORBaseUnknown_var::Adopt(new ZORObject(iLateType, "DUX"));
        return Handle(object.Get());
    });
}
