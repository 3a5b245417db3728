#pragma once

#include "ZORError.h"

// An error of the suite's own making: a breach of a contract or a failure inside a component.
class ZOR_EXPORT ZORInternalError : public ZORError
{
    ZOR_DECLARE_CLASS
public:
    explicit ZORInternalError(unsigned int iId = 0);
    ZORInternalError(const ZORInternalError& iOther);
    ~ZORInternalError() override;

    ZORError* CloneSelf() override;
};
