#pragma once

#include "ZORClass.h"
#include "ZORHandle.h"
#include "ZORUnicodeString.h"

// The security component: answers what users have the right to do. The library that implements it
// says which names of users, actions and objects there are, and where rights are kept.
//
//     ZORIDuxSecurity_var security = GetSecurity();
//     if (security && !security->IsAllowed("ann", "change", "plate")) …
//
// The order of the operations is part of the binary interface.
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORIDuxSecurity : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // For the classes that implement the interface.
    ZORIDuxSecurity();
    ~ZORIDuxSecurity() override;

    // 1 when the user has the right to do that to the object, else 0; also 0 for names that the
    // component does not know.
    virtual int IsAllowed(const ZORUnicodeString& iUser, const ZORUnicodeString& iAction,
                          const ZORUnicodeString& iObject) = 0;
};

// A handle on it.
using ZORIDuxSecurity_var = ZORHandle<ZORIDuxSecurity>;
