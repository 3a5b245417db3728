#pragma once

#include "ZORIDuxModel.h"
#include "ZORObject.h"

// A data model of the system: a kind and the name of the schema it follows. Nothing changes them
// after construction.
//
//     ZORDuxModel* model = new ZORDuxModel("Assembly", "AP214");
//     ZORIContainer_var container = ZORIDuxModel_var(model)->GetContainer();
//     model->Release();
//
// Offers ZORIDuxModel and ZORIContainer; both share its life. `new` yields null when there is no
// memory for the object. Each operation opens a method trace scope of level 42 under its full name.
// Thread rule: one thread at a time for one model.
class ZOR_EXPORT ZORDuxModel : public ZORObject
{
public:
    // A model of that kind and schema; a null kind is the empty text.
    ZORDuxModel(const char* iType, const ZORUnicodeString& iSchema);
    // A model of the kind "ModelSDM" whose schema is one blank, whatever `iType` is: callers tell
    // by that blank that no schema was chosen. Writes nothing to the trace.
    explicit ZORDuxModel(const char* iType);
    // A model of its own of the same kind and schema, with no members.
    ZORDuxModel(const ZORDuxModel& iOther);
    ZORDuxModel& operator=(const ZORDuxModel&) = delete;
    ~ZORDuxModel() override;

    // The kind of model.
    ZORUnicodeString GetModelType();
    // The name of its schema.
    ZORUnicodeString GetSchema();

    // Registers the class, once.
    static void InitMeta();
    // The class's metaobject, identifier and name; never freed.
    static ZORMetaClass* MetaObject();
    static const GUID& ClassId();
    static const char* ClassName();
    // Null: models are made with new.
    static ZORBaseUnknown* CreateItself();

private:
    ZORUnicodeString _ModelType = "ModelSDM";
    ZORUnicodeString _Schema = " ";

    ZOR_HIDDEN static ZORMetaClass* _MetaObject; // null until the class is registered
};

// The class's creation function: null, as CreateItself.
ZOR_EXPORT ZORBaseUnknown* CreateClassZORDuxModel();
