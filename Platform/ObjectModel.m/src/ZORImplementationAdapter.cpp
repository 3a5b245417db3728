#include "ZORImplementationAdapter.h"

#include "KeepAcrossForks.h"
#include "ZORUuid.h"

#include <algorithm>
#include <mutex>

ZOR_IMPLEMENT_CLASS(ZORImplementationAdapter, ZORKindImplementation, ZOREventSubscriber)

// Both sides of a link know it, so that either can go first; as they may do so in two threads, one
// lock guards the links of all objects. A pointer found under that lock leads to an object whose
// destructor has at least not passed this class; whether the object still lives is told by its
// count.
struct ZORImplementationAdapter::Particulars {
    using Objects = std::vector<ZORImplementationAdapter*>;

    ZORUnicodeString name;
    ZORUnicodeString identifier;
    Objects pointingHere;
    Objects pointedTo;

    // Never torn down: objects may go at the end of the process.
    static std::mutex& LinksLock()
    {
        static std::mutex* const lock = (KeepAcrossForks<&LinksLock>(), new std::mutex);
        return *lock;
    }
    static bool Has(const Objects& iObjects, const ZORImplementationAdapter* iObject)
    {
        return std::find(iObjects.begin(), iObjects.end(), iObject) != iObjects.end();
    }
    static void Forget(Objects& ioObjects, const ZORImplementationAdapter* iObject)
    {
        ioObjects.erase(std::remove(ioObjects.begin(), ioObjects.end(), iObject), ioObjects.end());
    }
};

ZORImplementationAdapter::ZORImplementationAdapter() = default;

ZORImplementationAdapter::ZORImplementationAdapter(const ZORImplementationAdapter& iOther)
    : ZOREventSubscriber(iOther)
{
    *this = iOther;
}

ZORImplementationAdapter&
ZORImplementationAdapter::operator=(const ZORImplementationAdapter& iOther)
{
    if (_Particulars || iOther._Particulars)
        SetName(iOther.GetName());
    return *this;
}

ZORImplementationAdapter::~ZORImplementationAdapter()
{
    if (!_Particulars)
        return;
    const std::lock_guard lock(Particulars::LinksLock());
    for (ZORImplementationAdapter* each : _Particulars->pointingHere)
        Particulars::Forget(each->_Particulars->pointedTo, this);
    for (ZORImplementationAdapter* each : _Particulars->pointedTo)
        Particulars::Forget(each->_Particulars->pointingHere, this);
}

ZORImplementationAdapter::Particulars& ZORImplementationAdapter::Own() const
{
    if (!_Particulars)
        _Particulars = std::make_unique<Particulars>();
    return *_Particulars;
}

int ZORImplementationAdapter::AddInverseLink(ZORImplementationAdapter* iPointing)
{
    if (!iPointing)
        return 0;
    const std::lock_guard lock(Particulars::LinksLock());
    Particulars::Objects& pointingHere = Own().pointingHere;
    Particulars::Objects& pointedTo = iPointing->Own().pointedTo;
    if (Particulars::Has(pointingHere, iPointing))
        return 0;
    pointingHere.push_back(iPointing);
    try {
        pointedTo.push_back(this);
    } catch (...) {
        pointingHere.pop_back();
        throw;
    }
    return 1;
}

int ZORImplementationAdapter::RemoveInverseLink(ZORImplementationAdapter* iPointing)
{
    const std::lock_guard lock(Particulars::LinksLock());
    if (!iPointing || !_Particulars || !Particulars::Has(_Particulars->pointingHere, iPointing))
        return 0;
    Particulars::Forget(_Particulars->pointingHere, iPointing);
    Particulars::Forget(iPointing->_Particulars->pointedTo, this);
    return 1;
}

std::vector<ZORBaseUnknown_var> ZORImplementationAdapter::GetInverseLinks() const
{
    std::vector<ZORBaseUnknown_var> objects;
    const std::lock_guard lock(Particulars::LinksLock());
    if (!_Particulars)
        return objects;
    objects.reserve(_Particulars->pointingHere.size());
    for (ZORImplementationAdapter* each : _Particulars->pointingHere)
        if (each->AddRefIfAlive())
            objects.push_back(ZORBaseUnknown_var::Adopt(each));
    return objects;
}

void ZORImplementationAdapter::SetName(const ZORUnicodeString& iName)
{
    Own().name = iName;
}

ZORUnicodeString ZORImplementationAdapter::GetName() const
{
    return _Particulars ? _Particulars->name : ZORUnicodeString();
}

const char* ZORImplementationAdapter::GetName_B() const
{
    return _Particulars ? _Particulars->name.ConvertToChar() : "";
}

ZORUnicodeString ZORImplementationAdapter::GetSymbolicLink() const
{
    const ZORUnicodeString name = GetName();
    return name.IsEmpty() ? name : ZORUnicodeString(IsA()) + " " + name;
}

ZORUnicodeString ZORImplementationAdapter::GetIdentifier() const
{
    ZORUnicodeString& identifier = Own().identifier;
    if (identifier.IsEmpty()) {
        char text[ZORUuid::kTextSize];
        ZORUuid().UUID_to_chaine(text);
        identifier = text;
    }
    return identifier;
}

ZORStoreAnswer ZORImplementationAdapter::GetDocument(ZORBaseUnknown_var& oDocument) const
{
    oDocument = nullptr;
    return ZORStoreNotSupported;
}

ZORStoreAnswer ZORImplementationAdapter::GetLocatorType(ZORUnicodeString& oType) const
{
    oType = "";
    return ZORStoreNotSupported;
}

ZORStoreAnswer
ZORImplementationAdapter::GetAdditionalInfos(ZORListValZORUnicodeString& oInfos) const
{
    oInfos.RemoveAll();
    return ZORStoreNotSupported;
}

ZORStoreAnswer ZORImplementationAdapter::ListSupportedAreasIdentifier(
    ZORListValZORUnicodeString& oIdentifiers) const
{
    oIdentifiers.RemoveAll();
    return ZORStoreNotSupported;
}

ZORStoreAnswer ZORImplementationAdapter::IsAFilledArea(const ZORUnicodeString&, int& oFilled) const
{
    oFilled = 0;
    return ZORStoreNotSupported;
}

ZORStoreAnswer ZORImplementationAdapter::FillArea(const ZORUnicodeString&)
{
    return ZORStoreNotSupported;
}

ZORStoreAnswer ZORImplementationAdapter::GetStoredName(ZORUnicodeString& oName) const
{
    oName = "";
    return ZORStoreNotSupported;
}

ZORStoreAnswer ZORImplementationAdapter::ExternalBindPointedObjects()
{
    return ZORStoreNotSupported;
}
