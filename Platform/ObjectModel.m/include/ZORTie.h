#pragma once

#include "ZORClass.h"
#include "ZORDictionary.h"

// Binds a new adapter to the object it stands for (see ZORBaseUnknown::SetImpl) and notes which
// interface it shows, so that later queries find it. Called by the adapter's constructor. `iClass`
// and `iInterface` are the identifiers of the object's class and of the interface.
// REQUIRES: adapter and object are not null, and what SetImpl requires. Thread rule: any thread.
ZOR_EXPORT void TieConstructor(ZORBaseUnknown* iAdapter, ZORBaseUnknown* iObject,
                               const GUID& iClass, const GUID& iInterface);

// Whether the object, or the one behind it when it is an adapter, is of that class or of one
// derived from it. False when either is null. Creators ask this first: what an adapter forwards to
// must be there. Thread rule: any thread.
ZOR_EXPORT bool ZORIsOfClass(const ZORBaseUnknown* iObject, const ZORMetaClass* iClass);

// ---- A TIE adapter

// In the class of an adapter: its identity, its constructor, which binds it to its object, and
// Self(), the object it forwards to. What follows it is private.
//
// A TIE adapter is the class TIE<Interface><Class>, which shows the interface on objects of the
// class by forwarding each operation, and the function CreateTIE<Interface><Class>, which the
// dictionary calls. It makes no adapter for an object of another class.
//
//     class TIESomeInterfaceSomeClass final : public SomeInterface
//     {
//         ZOR_DECLARE_TIE(SomeInterface, SomeClass)
//     public:
//         void Operation() override { Self()->Operation(); }
//     };
//     ZOR_IMPLEMENT_TIE(SomeInterface, SomeClass, ZORKindTie)                 // in its source
//     static const ZORFillDictionary entry("SomeClass", "SomeInterface",
//                                          CreateTIESomeInterfaceSomeClass);
//
// For a late type (see ZORObject.h) there is no class to forward to: its objects are bare, and the
// adapter is the implementation, with what state it needs. `using SomeType = ZORObject;` before the
// adapter gives it its name.
#define ZOR_DECLARE_TIE(Interface, Class)                                                          \
    ZOR_DECLARE_CLASS                                                                              \
public:                                                                                            \
    explicit TIE##Interface##Class(ZORBaseUnknown* iObject);                                       \
    ~TIE##Interface##Class() override;                                                             \
                                                                                                   \
private:                                                                                           \
    Class* Self() const                                                                            \
    {                                                                                              \
        return static_cast<Class*>(GetImpl());                                                     \
    }

// In the source of an adapter: what ZOR_DECLARE_TIE declares, and the function
// CreateTIE<Interface><Class>. `Kind` is ZORKindTie, or ZORKindCorbaTie for a CORBA interface. The
// metaobject of the adapter bears the interface's name.
#define ZOR_IMPLEMENT_TIE(Interface, Class, Kind)                                                  \
    ZOR_IMPLEMENT_CLASS_STATICS(                                                                   \
        TIE##Interface##Class,                                                                     \
        new ZORMetaClass(#Interface, Interface::MetaObject(), Class::MetaObject(), Kind))          \
    ZOR_IMPLEMENT_CLASS_VIRTUALS(TIE##Interface##Class)                                            \
    TIE##Interface##Class::TIE##Interface##Class(ZORBaseUnknown* iObject)                          \
    {                                                                                              \
        TieConstructor(this, iObject, Class::ClassId(), Interface::ClassId());                     \
    }                                                                                              \
    TIE##Interface##Class::~TIE##Interface##Class() = default;                                     \
    ZORBaseUnknown* CreateTIE##Interface##Class(ZORBaseUnknown* iObject)                           \
    {                                                                                              \
        return ZORIsOfClass(iObject, Class::MetaObject()) ? new TIE##Interface##Class(iObject)     \
                                                          : nullptr;                               \
    }
