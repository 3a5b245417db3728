#pragma once

#include "ZORInternalError.h"

// An error whose text comes from a message catalog. The services raise it bare, without a text,
// when an argument that must not be empty is: file and line then tell which.
class ZOR_EXPORT ZORDUXNLSError : public ZORInternalError
{
    ZOR_DECLARE_CLASS
public:
    // Identifier 0 and no text.
    ZORDUXNLSError();
    explicit ZORDUXNLSError(unsigned int iId);
    ZORDUXNLSError(const ZORDUXNLSError& iOther);
    ~ZORDUXNLSError() override;

    // A copy with one reference, the caller's; null when there is no memory.
    ZORError* CloneSelf() override;
    // One descriptor that describes nothing.
    void GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable) override;

    // Adds a place to the history without raising; returns this error.
    ZORDUXNLSError& Setup(const char* iFile, int iLine);

    using ZORError::GetMessage;
    // The text from the catalog; empty when there is none. Not what GetMessage(int) says.
    ZORUnicodeString GetMessage() const;

    // Null: errors are made with new.
    static ZORBaseUnknown* CreateItself();

    static const ZORErrDsc errorTable[1];
    static const unsigned int errorTableLength;

private:
    ZORUnicodeString _Message;
};
