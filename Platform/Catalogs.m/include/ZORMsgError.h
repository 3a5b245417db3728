#pragma once

#include "ZORInternalError.h"

// What a message catalog raises. Its text names the catalog and the key that was asked for, or the
// file and what is wrong with it:
//
//     message catalog ZORDUXCdaErrorMsg: there is no text for CDA_W_0001.Short
//     message catalog ZORDUXCdaErrorMsg: not found (asked for CDA_W_0001.Short)
//     message catalog /usr/share/zor/catalogs/fr/Site.toml: line 3, column 8: encountered …
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORMsgError : public ZORInternalError
{
    ZOR_DECLARE_CLASS
public:
    // An error with identifier 0 and no text yet.
    ZORMsgError();
    // Copies text and history.
    ZORMsgError(const ZORMsgError& iOther);
    ~ZORMsgError() override;

    // A new error that copies this one, with one reference, the caller's; null when there is no
    // memory.
    ZORError* CloneSelf() override;
};
