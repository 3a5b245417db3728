#include "ZORMetaClass.h"

#include "DictionaryFiles.h"
#include "Registry.h"

#include <cstring>

ZORMetaClass::ZORMetaClass(const char* iName) : _Name(iName) {}

ZORMetaClass::ZORMetaClass(const char* iName, ZORMetaClass* iParent, ZORMetaClass* iImplementation,
                           ZORClassKind iKind)
    : _Name(iName), _Kind(iKind), _Parent(iParent), _Implementation(iImplementation)
{
}

ZORMetaClass::~ZORMetaClass() = default;

void ZORMetaClass::SetClassId(const GUID& iClassId)
{
    if (HasClassId())
        return;
    _ClassId = iClassId;
    _HasClassId.store(true, std::memory_order_release);
}

void ZORMetaClass::SetFirstParent(ZORMetaClass* iParent)
{
    ZORMetaClass* none = nullptr;
    if (!HasClassId())
        _Parent.compare_exchange_strong(none, iParent, std::memory_order_acq_rel);
}

int ZORMetaClass::IsAKindOf(const char* iClassName) const
{
    if (!iClassName)
        return 0;
    for (const ZORMetaClass* meta = this; meta; meta = meta->GetParent())
        if (std::strcmp(meta->GetClassName(), iClassName) == 0)
            return 1;
    return 0;
}

const ZORSupportedClass* ZORMetaClass::ListOfSupportedClass(const char* iInterfaceName)
{
    if (!iInterfaceName)
        return nullptr;
    ReadDictionaryFiles();
    return Registry::Instance().Supported(iInterfaceName);
}

ZORMetaClass* QueryMetaObject(const char* iClassName)
{
    return iClassName ? Registry::Instance().Query(iClassName) : nullptr;
}

ZORMetaClass* QueryMetaObject(const GUID& iClassId)
{
    return Registry::Instance().Query(iClassId);
}

ZORMetaClass* fct_FindMetaObject(const char* iClassName)
{
    return iClassName ? Registry::Instance().Find(iClassName) : nullptr;
}

ZORMetaClass* ZORRegisterClass(const char* iClassName, ZORClassKind iKind, ZORMetaClass* iParent)
{
    ZORMetaClass* meta = QueryMetaObject(iClassName);
    if (!meta || !meta->HasClassId()) {
        const GUID id = fct_CreateCLSID();
        if (!meta)
            meta = fct_FindMetaObject(iClassName);
        AddDictionary(id, &CLSID_ZORMetaClass, iClassName, "MetaObject", nullptr, meta, nullptr, 0);
        meta->SetClassId(id);
    }
    meta->SetKind(iKind);
    meta->SetParent(iParent);
    return meta;
}
