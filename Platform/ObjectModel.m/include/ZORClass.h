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

#define ZOR_DECLARE_CLASS_STATICS                                                                  \
public:                                                                                            \
    [[maybe_unused]] static ZORMetaClass* MetaObject();                                            \
    [[maybe_unused]] static const GUID& ClassId();                                                 \
    [[maybe_unused]] static const char* ClassName();                                               \
                                                                                                   \
private:

#define ZOR_DECLARE_CLASS                                                                          \
    ZOR_DECLARE_CLASS_STATICS                                                                      \
public:                                                                                            \
    ZORMetaClass* GetMetaObject() const override;                                                  \
    const char* IsA() const override;                                                              \
    int IsAKindOf(const char* iClassName) const override;                                          \
                                                                                                   \
private:

// `Meta` is an expression that makes the metaobject; it runs once.
#define ZOR_IMPLEMENT_CLASS_STATICS(Class, Meta)                                                   \
    ZORMetaClass* Class::MetaObject()                                                              \
    {                                                                                              \
        static ZORMetaClass* const meta = (Meta);                                                  \
        return meta;                                                                               \
    }                                                                                              \
    const GUID& Class::ClassId()                                                                   \
    {                                                                                              \
        return MetaObject()->GetClassId();                                                         \
    }                                                                                              \
    const char* Class::ClassName()                                                                 \
    {                                                                                              \
        return MetaObject()->GetClassName();                                                       \
    }

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

#define ZOR_IMPLEMENT_CLASS(Class, Kind, Parent)                                                   \
    ZOR_IMPLEMENT_CLASS_STATICS(Class, ZORRegisterClass(#Class, Kind, Parent::MetaObject()))       \
    ZOR_IMPLEMENT_CLASS_VIRTUALS(Class)
