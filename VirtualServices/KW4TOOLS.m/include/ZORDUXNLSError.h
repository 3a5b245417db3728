#pragma once

#include "ZORInternalError.h"

// An error whose text comes from a message catalog. The services raise it bare, without a text,
// when an argument that must not be empty is: file and line then tell which.
//
//     auto* error = new ZORDUXNLSError;
//     ZORUnicodeString part = "plate";
//     error->SetNLSMsg("Site", "Locked", 1, &part);
//     error->Throw("Site/Parts", 41);
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORDUXNLSError : public ZORInternalError
{
    ZOR_DECLARE_CLASS
public:
    // Identifier 0 and no text.
    ZORDUXNLSError();
    // That identifier and no text. No text goes with any identifier: see GetErrorTable.
    explicit ZORDUXNLSError(unsigned int iId);
    // Copies identifier, parameters, history and the text that SetNLSMsg made.
    ZORDUXNLSError(const ZORDUXNLSError& iOther);
    ~ZORDUXNLSError() override;

    // A copy with one reference, the caller's; null when there is no memory.
    ZORError* CloneSelf() override;
    // One descriptor that describes nothing.
    void GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable) override;

    // Adds a place to the history without raising; returns this error.
    ZORDUXNLSError& Setup(const char* iFile, int iLine);

    // Makes the text of this error the message of that key in the catalog (see ZORMsgCatalog.h),
    // with the parameters in its places. `iParams` is null or an array with a string for each
    // place; `iNbParams` does not count and is not looked at. An error on the way, a missing
    // catalog or key for one, does not come out: its text becomes this error's, and is written to
    // standard output, its history to standard error.
    void SetNLSMsg(const ZORUnicodeString& iCatalog, const ZORUnicodeString& iKey, int iNbParams,
                   ZORUnicodeString* iParams);

    using ZORError::GetMessage;
    // The text that SetNLSMsg made; empty when there is none. Not what GetMessage(int) says.
    ZORUnicodeString GetMessage() const;

    // Null: errors are made with new.
    static ZORBaseUnknown* CreateItself();

    static const ZORErrDsc errorTable[1];       // what GetErrorTable gives
    static const unsigned int errorTableLength; // 1

private:
    ZOR_HIDDEN void ReadMessage(const ZORUnicodeString& iCatalog, const ZORUnicodeString& iKey,
                                const ZORUnicodeString* iParams);

    ZORUnicodeString _Message;
};
