#include "ZORObject.h"

ZOR_IMPLEMENT_CLASS_STATICS(ZORObject, ZORRegisterClass("ZORObject", ZORKindImplementation,
                                                        ZORImplementationAdapter::MetaObject()))

namespace
{

// The registered class of that name if objects like these can be of it, or null.
ZORMetaClass* ClassNamed(const char* iName)
{
    ZORMetaClass* const meta = QueryMetaObject(iName);
    const bool fits =
        meta && meta->HasClassId() && meta->IsAKindOf(ZORImplementationAdapter::ClassName());
    return fits ? meta : nullptr;
}

ZORMetaClass* LateTypeNamed(const char* iName)
{
    if (!iName || !*iName)
        return nullptr;
    ZORMetaClass* const meta = fct_FindMetaObject(iName);
    meta->SetFirstParent(ZORObject::MetaObject());
    return meta;
}

} // namespace

ZORObject::ZORObject(const char* iLateType, const char* iClassName)
    : _Class(ClassNamed(iClassName)), _LateType(_Class ? nullptr : LateTypeNamed(iLateType))
{
    if (!_Class)
        _Class = MetaObject();
}

ZORObject::ZORObject(const ZORObject& iOther) = default;

ZORObject& ZORObject::operator=(const ZORObject& iOther)
{
    if (this != &iOther)
        ZORImplementationAdapter::operator=(iOther);
    return *this;
}

ZORObject::~ZORObject() = default;

// A class of the late type's name may be registered while the object lives: its adapters are not
// for this one.
ZORMetaClass* ZORObject::GetMetaObject() const
{
    return _LateType && !_LateType->HasClassId() ? _LateType : _Class;
}

const char* ZORObject::IsA() const
{
    return GetMetaObject()->GetClassName();
}

int ZORObject::IsAKindOf(const char* iClassName) const
{
    return GetMetaObject()->IsAKindOf(iClassName);
}
