#include "ZORDUXNLSError.h"

ZOR_IMPLEMENT_CLASS(ZORDUXNLSError, ZORKindImplementation, ZORInternalError)

const ZORErrDsc ZORDUXNLSError::errorTable[1] = {};
const unsigned int ZORDUXNLSError::errorTableLength = 1;

ZORDUXNLSError::ZORDUXNLSError() : ZORDUXNLSError(0) {}

ZORDUXNLSError::ZORDUXNLSError(unsigned int iId) : ZORInternalError(iId) {}

ZORDUXNLSError::ZORDUXNLSError(const ZORDUXNLSError& iOther) = default;

ZORDUXNLSError::~ZORDUXNLSError() = default;

ZORBaseUnknown* ZORDUXNLSError::CreateItself()
{
    return nullptr;
}

ZORError* ZORDUXNLSError::CloneSelf()
{
    return new ZORDUXNLSError(*this);
}

void ZORDUXNLSError::GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable)
{
    *oCount = 1;
    *oTable = errorTable;
}

ZORDUXNLSError& ZORDUXNLSError::Setup(const char* iFile, int iLine)
{
    ZORError::Setup(iFile, iLine);
    return *this;
}

ZORUnicodeString ZORDUXNLSError::GetMessage() const
{
    return _Message;
}
