#pragma once

#include "ZORBaseUnknown.h"
#include "ZORMetaClass.h"

// The identity of a class: its static MetaObject(), ClassId() and ClassName(), and the three
// virtual operations that answer with them. The metaobject is made on the first call, in any
// thread.
//
//     class SomeComponent : public ZORBaseUnknown
//     {
//         ZOR_DECLARE_CLASS
//     public: …
//     };
//     ZOR_IMPLEMENT_CLASS(SomeComponent, ZORKindImplementation, ZORBaseUnknown)   // in its source
//
// Thread rule: what the macros define may be called from any thread.

// ---- In the class

// Declares the three static functions alone, for a class that answers the virtual operations in a
// way of its own. What follows it is private.
#define ZOR_DECLARE_CLASS_STATICS                                                                  \
public:                                                                                            \
    [[maybe_unused]] static ZORMetaClass* MetaObject();                                            \
    [[maybe_unused]] static const GUID& ClassId();                                                 \
    [[maybe_unused]] static const char* ClassName();                                               \
                                                                                                   \
private:

// Declares all six. What follows it is private.
#define ZOR_DECLARE_CLASS                                                                          \
    ZOR_DECLARE_CLASS_STATICS                                                                      \
public:                                                                                            \
    ZORMetaClass* GetMetaObject() const override;                                                  \
    const char* IsA() const override;                                                              \
    int IsAKindOf(const char* iClassName) const override;                                          \
                                                                                                   \
private:

// ---- In its source

// Defines the three static functions. `Meta` is an expression that makes the metaobject; it runs
// once.
#define ZOR_IMPLEMENT_CLASS_STATICS(Class, Meta)                                                   \
    ZORMetaClass* Class::MetaObject()                                                              \
    {                                                                                              \
        static ZORMetaClass* const meta = (Meta);                                                  \
        return meta;                                                                               \
    }                                                                                              \
    const GUID& Class::ClassId()                                                                   \
    {                                                                                              \
        static const GUID& id = MetaObject()->GetClassId(); /* every query asks for it */          \
        return id;                                                                                 \
    }                                                                                              \
    const char* Class::ClassName()                                                                 \
    {                                                                                              \
        return MetaObject()->GetClassName();                                                       \
    }

// Defines the three virtual operations by the static functions.
#define ZOR_IMPLEMENT_CLASS_VIRTUALS(Class)                                                        \
    ZORMetaClass* Class::GetMetaObject() const                                                     \
    {                                                                                              \
        return MetaObject();                                                                       \
    }                                                                                              \
    const char* Class::IsA() const                                                                 \
    {                                                                                              \
        return ClassName();                                                                        \
    }                                                                                              \
    int Class::IsAKindOf(const char* iClassName) const                                             \
    {                                                                                              \
        return MetaObject()->IsAKindOf(iClassName);                                                \
    }

// Defines all six: the class is registered under its own name, with that ZORClassKind and the class
// it is based on.
#define ZOR_IMPLEMENT_CLASS(Class, Kind, Parent)                                                   \
    ZOR_IMPLEMENT_CLASS_STATICS(Class, ZORRegisterClass(#Class, Kind, Parent::MetaObject()))       \
    ZOR_IMPLEMENT_CLASS_VIRTUALS(Class)
