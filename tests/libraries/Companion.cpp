// A library that test programs find through dictionary files and are never linked with.

#include "ZORDuxServicesMsg.h"
#include "ZORIDuxMaskEditor.h"
#include "ZORIDuxSecurity.h"
#include "ZORInternalError.h"
#include "ZORObject.h"
#include "ZORRaisedError.h"
#include "ZORTie.h"

using TestGuard = ZORObject; // a late type

// Allows what the user is called.
class TIEZORIDuxSecurityTestGuard final : public ZORIDuxSecurity
{
    ZOR_DECLARE_TIE(ZORIDuxSecurity, TestGuard)
public:
    int IsAllowed(const ZORUnicodeString& iUser, const ZORUnicodeString& iAction,
                  const ZORUnicodeString&) override
    {
        return iUser == iAction;
    }
};

class TIEZORIDuxMaskEditorTestGuard final : public ZORIDuxMaskEditor
{
    ZOR_DECLARE_TIE(ZORIDuxMaskEditor, TestGuard)
public:
    ZORUnicodeString GetMask(const ZORUnicodeString&) override { return _Mask; }
    void PutMask(const ZORUnicodeString&, const ZORUnicodeString& iMask) override { _Mask = iMask; }

private:
    ZORUnicodeString _Mask;
};

// Known to this library alone.
class ITestWatch : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
};
ZOR_IMPLEMENT_CLASS(ITestWatch, ZORKindInterface, ZORBaseUnknown)

class TIEITestWatchTestGuard final : public ITestWatch
{
    ZOR_DECLARE_TIE(ITestWatch, TestGuard)
};

ZOR_EXPORT ZORBaseUnknown* CreateTIEZORIDuxSecurityTestGuard(ZORBaseUnknown* iObject);
extern "C" ZOR_EXPORT ZORBaseUnknown* CreateTIEZORIDuxMaskEditorTestGuard(ZORBaseUnknown* iObject);
ZOR_EXPORT ZORBaseUnknown* CreateTIEITestWatchTestGuard(ZORBaseUnknown* iObject);

ZOR_IMPLEMENT_TIE(ZORIDuxSecurity, TestGuard, ZORKindTie)
ZOR_IMPLEMENT_TIE(ZORIDuxMaskEditor, TestGuard, ZORKindTie)
ZOR_IMPLEMENT_TIE(ITestWatch, TestGuard, ZORKindTie)

extern "C" ZOR_EXPORT ZORBaseUnknown* CreateNothing(ZORBaseUnknown*)
{
    return nullptr;
}

extern "C" ZOR_EXPORT ZORBaseUnknown* CreateRaising(ZORBaseUnknown*)
{
    (new ZORInternalError)->Throw("Companion", 7);
    return nullptr;
}

extern "C" ZOR_EXPORT ZORBaseUnknown* CreateRaisingMessage(ZORBaseUnknown*)
{
    (new ZORDuxServicesMsg(0x20003))->SetParameters(1, "libSite.so").Throw("Companion", 8);
    return nullptr;
}

// An object of the ZORError classes that does not lead to them: nothing is told of it.
class Stranger final : public ZORError
{
public:
    ZORMetaClass* GetMetaObject() const override { return ZORBaseUnknown::MetaObject(); }
    const char* IsA() const override { return ZORBaseUnknown::ClassName(); }
    int IsAKindOf(const char* iClassName) const override
    {
        return ZORBaseUnknown::MetaObject()->IsAKindOf(iClassName);
    }
};

extern "C" ZOR_EXPORT ZORBaseUnknown* CreateRaisingStranger(ZORBaseUnknown*)
{
    (new Stranger)->Throw("Companion", 9);
    return nullptr;
}

// Its error does not raise but comes back: the query then finds nothing.
class Returning final : public ZORInternalError
{
public:
    void Throw(const char* iFile, int iLine) override { Setup(iFile, iLine); }
};

extern "C" ZOR_EXPORT ZORBaseUnknown* CreateRaisingReturning(ZORBaseUnknown*)
{
    throw ZORRaisedError(new Returning);
}
