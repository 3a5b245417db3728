#include "ServicesErrors.h"

#include "ZORDUXNLSError.h"
#include "ZORDuxServicesMsg.h"

#include <memory>
#include <new>

namespace
{

constexpr unsigned int kInterfaceNotObtainable = 0x20002;
constexpr unsigned int kLibraryNotLoadable = 0x20003;
constexpr unsigned int kNoCreation = 0x20004;

// Both classes raise what they are told to: their Throw does not come back.
[[noreturn]] void Raise(ZORError* iError, const char* iFile, int iLine)
{
    if (iError)
        iError->Throw(iFile, iLine);
    throw std::bad_alloc();
}

template <class... Texts>
[[noreturn]] void RaiseMessage(unsigned int iId, const char* iFile, int iLine, Texts... iTexts)
{
    std::unique_ptr<ZORDuxServicesMsg> error(new ZORDuxServicesMsg(iId));
    if (error)
        error->SetParameters(static_cast<int>(sizeof...(iTexts)), iTexts...);
    Raise(error.release(), iFile, iLine);
}

} // namespace

void RaiseArgumentError(int iLine)
{
    Raise(new ZORDUXNLSError, kServicesFile, iLine);
}

void RaiseNoInterface(const char* iComponent, const char* iInterface, const char* iFile, int iLine)
{
    RaiseMessage(kInterfaceNotObtainable, iFile, iLine, iComponent, iInterface);
}

void RaiseLibraryNotLoadable(const char* iLibrary, const char* iFile, int iLine)
{
    RaiseMessage(kLibraryNotLoadable, iFile, iLine, iLibrary);
}

void RaiseNoCreation(const char* iLibrary, const char* iFunction, const char* iFile, int iLine)
{
    RaiseMessage(kNoCreation, iFile, iLine, iLibrary, iFunction);
}
