#pragma once

#include "ZORError.h"

// An error of the suite's own making: a breach of a contract or a failure inside a component.
//
//     auto* error = new ZORInternalError;
//     error->SetText("index out of range: 7");
//     error->Throw(__FILE__, __LINE__);
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORInternalError : public ZORError
{
    ZOR_DECLARE_CLASS
public:
    // An error with that identifier; see ZORError.
    explicit ZORInternalError(unsigned int iId = 0);
    // Copies identifier, parameters, text and history.
    ZORInternalError(const ZORInternalError& iOther);
    ~ZORInternalError() override;

    // A new error that copies this one, with one reference, the caller's; null when there is no
    // memory.
    ZORError* CloneSelf() override;
};
