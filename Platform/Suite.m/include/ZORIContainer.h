#pragma once

#include "ZORClass.h"
#include "ZORHandle.h"

// The container of a model.
class ZOR_EXPORT ZORIContainer : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    ZORIContainer();
    ~ZORIContainer() override;
};

using ZORIContainer_var = ZORHandle<ZORIContainer>;
