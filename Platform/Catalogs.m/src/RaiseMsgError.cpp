#include "RaiseMsgError.h"

#include "ZORMsgError.h"

#include <new>

void RaiseMsgError(const std::string& iText, const char* iFile, int iLine)
{
    auto* const error = new ZORMsgError;
    if (!error)
        throw std::bad_alloc();
    error->SetText(ZORUnicodeString(iText));
    error->Throw(iFile, iLine);
    throw std::bad_alloc(); // not reached: Throw of this class does not return
}
