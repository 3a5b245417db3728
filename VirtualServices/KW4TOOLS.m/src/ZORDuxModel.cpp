#include "ZORDuxModel.h"

#include "MethodFrame.h"
#include "ZORMemoryContainer.h"
#include "ZORTie.h"

ZORMetaClass* ZORDuxModel::_MetaObject = nullptr;

void ZORDuxModel::InitMeta()
{
    [[maybe_unused]] static const ZORMetaClass* const registered = _MetaObject = ZORRegisterClass(
        "ZORDuxModel", ZORKindImplementation, ZORImplementationAdapter::MetaObject());
}

ZORMetaClass* ZORDuxModel::MetaObject()
{
    InitMeta();
    return _MetaObject;
}

const GUID& ZORDuxModel::ClassId()
{
    return MetaObject()->GetClassId();
}

const char* ZORDuxModel::ClassName()
{
    return MetaObject()->GetClassName();
}

ZORBaseUnknown* ZORDuxModel::CreateItself()
{
    return nullptr;
}

ZORBaseUnknown* CreateClassZORDuxModel()
{
    return ZORDuxModel::CreateItself();
}

ZORDuxModel::ZORDuxModel(const char* iType, const ZORUnicodeString& iSchema)
    : ZORObject(iType, ClassName())
{
    MethodFrame frame("ZORDuxModel::ZORDuxModel (iSchema)");
    frame.Value("iType", iType ? iType : "");
    frame.Value("iSchema", iSchema);
    _ModelType = iType;
    _Schema = iSchema;
}

ZORDuxModel::ZORDuxModel(const char* iType) : ZORObject(iType, ClassName())
{
    const MethodFrame frame("ZORDuxModel::ZORDuxModel");
}

ZORDuxModel::ZORDuxModel(const ZORDuxModel& iOther) = default;

ZORDuxModel::~ZORDuxModel()
{
    try {
        const MethodFrame frame("ZORDuxModel::~ZORDuxModel");
    } catch (...) { // what the trace raises does not leave a destructor
    }
}

ZORUnicodeString ZORDuxModel::GetModelType()
{
    MethodFrame frame("ZORDuxModel::GetModelType");
    frame.Value("_ModelType", _ModelType);
    return _ModelType;
}

ZORUnicodeString ZORDuxModel::GetSchema()
{
    MethodFrame frame("ZORDuxModel::GetSchema");
    frame.Value("_Schema", _Schema);
    return _Schema;
}

// A model is its own container.
static const ZORFillDictionary containerEntry("ZORDuxModel", "ZORIContainer",
                                              ZORCreateMemoryContainer);
