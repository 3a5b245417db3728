#include "ZORDUXNLSError.h"

#include "ZORHandle.h"
#include "ZORMsg.h"
#include "ZORMsgCatalog.h"
#include "ZORXHContext.h"

#include <iostream>
#include <new>

ZOR_IMPLEMENT_CLASS(ZORDUXNLSError, ZORKindImplementation, ZORInternalError)

const ZORErrDsc ZORDUXNLSError::errorTable[1] = {};
const unsigned int ZORDUXNLSError::errorTableLength = 1;

namespace
{

// Null when there is no memory for it, or for what it holds.
ZORHandle<ZORMsgCatalog> OpenCatalog(const char* iName)
{
    try {
        return ZORHandle<ZORMsgCatalog>::Adopt(new ZORMsgCatalog(iName));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

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

void ZORDUXNLSError::SetNLSMsg(const ZORUnicodeString& iCatalog, const ZORUnicodeString& iKey,
                               [[maybe_unused]] int iNbParams, ZORUnicodeString* iParams)
{
    ZORXHContext context;
    try {
        ReadMessage(iCatalog, iKey, iParams);
    } catch (const ZORRaisedError& raised) {
        ZORError& error = context.Catch(raised);
        if (!error.IsAKindOf(ZORError::ClassName())) {
            error.Throw(nullptr, 0);
            return;
        }
        _Message = error.GetMessage(0);
        error.PrintHistory(std::cerr);
        std::cout << _Message << std::endl;
        context.Flush();
    }
}

void ZORDUXNLSError::ReadMessage(const ZORUnicodeString& iCatalog, const ZORUnicodeString& iKey,
                                 const ZORUnicodeString* iParams)
{
    const ZORHandle<ZORMsgCatalog> catalog = OpenCatalog(iCatalog.ConvertToChar());
    if (!catalog) {
        _Message = "ZORDUXNLSError::SetNLSMsg - Internal error";
        return;
    }
    const auto message = ZORHandle<ZORMsg>::Adopt(catalog->GetMsg(iKey));
    _Message = message->BuildMessage(iParams);
}

ZORUnicodeString ZORDUXNLSError::GetMessage() const
{
    return _Message;
}
