#pragma once

#include "ZORImplementationAdapter.h"

// A component whose type is told when it is made.
//
//     ZORObject* object = new ZORObject("DUXSecurity", "DUX"); // of the late type DUXSecurity
//     ZORIDuxSecurity_var security(object);                    // null when nobody implements it
//     object->Release();
//
// A bare object has a late type: a name that no code defines as a class, and under which other
// libraries offer adapters, through a dictionary file as a rule. A class that derives from
// ZORObject gives its own name as the class name; its objects are of that class, whatever the late
// type says. So what a caller writes as a type never makes an object pass for one of another class.
//
// Thread rule: as for ZORImplementationAdapter.
class ZOR_EXPORT ZORObject : public ZORImplementationAdapter
{
    ZOR_DECLARE_CLASS
public:
    // The object is of the class `iClassName` when one of that name is registered whose parents
    // lead to ZORImplementationAdapter; else of the late type `iLateType`, as long as that is not
    // the name of a registered class; else a mere ZORObject. Both may be null or empty.
    // REQUIRES: a registered `iClassName` is the name of the class whose constructor calls this.
    ZORObject(const char* iLateType, const char* iClassName);
    // Of the same type.
    ZORObject(const ZORObject& iOther);
    // Copies the name; the type stays.
    ZORObject& operator=(const ZORObject& iOther);
    ~ZORObject() override;

private:
    ZORMetaClass* _Class;    // registered; answers unless
    ZORMetaClass* _LateType; // this one does: neither null nor registered
};
