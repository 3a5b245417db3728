#include "ServicesErrors.h"

#include "ZORDUXNLSError.h"
#include "ZORDuxServicesMsg.h"

#include <new>

namespace
{

constexpr unsigned int kInterfaceNotObtainable = 0x20002;

// Both classes raise what they are told to: their Throw does not come back.
[[noreturn]] void Raise(ZORError* iError, const char* iFile, int iLine)
{
    if (iError)
        iError->Throw(iFile, iLine);
    throw std::bad_alloc();
}

} // namespace

void RaiseArgumentError(int iLine)
{
    Raise(new ZORDUXNLSError, kServicesFile, iLine);
}

void RaiseNoInterface(const char* iComponent, const char* iInterface, const char* iFile, int iLine)
{
    auto* const error = new ZORDuxServicesMsg(kInterfaceNotObtainable);
    if (error)
        error->SetParameters(2, iComponent, iInterface);
    Raise(error, iFile, iLine);
}
