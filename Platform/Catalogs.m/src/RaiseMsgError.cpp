#include "RaiseMsgError.h"

#include "ZORMsgError.h"

#include <memory>
#include <new>

void RaiseMsgError(const std::string& iText, const char* iFile, int iLine)
{
    std::unique_ptr<ZORMsgError> error(new ZORMsgError);
    if (!error)
        throw std::bad_alloc();
    error->SetText(ZORUnicodeString(iText));
    error.release()->Throw(iFile, iLine);
    throw std::bad_alloc(); // not reached: Throw of this class does not return
}
