#pragma once

#include "ZORExport.h"
#include "ZORGuid.h"

#include <atomic>
#include <string>

// What a metaobject describes. The numbers are part of the interface.
enum ZORClassKind : int {
    ZORKindUnknown = 0,        // only its name is known so far
    ZORKindImplementation = 1, // a class whose objects do the work
    ZORKindInterface = 2,      // an abstract class, reached by queries
    ZORKindCorbaTie = 5,       // an adapter that shows a CORBA interface
    ZORKindTie = 7,            // an adapter that shows a component interface
};

// One class of a chain that ZORMetaClass::ListOfSupportedClass returns.
struct ZORSupportedClass {
    const char* className;         // the platform's, as the chain
    const ZORSupportedClass* next; // null in the last one
};

// The metaobject of a class: its name, identifier, kind and parent.
//
//     ZORMetaClass* meta = QueryMetaObject("ZORDuxServices");
//     if (meta && meta->IsAKindOf("ZORBaseUnknown")) …
//
// Registered metaobjects (those that QueryMetaObject finds) live as long as the process.
// Thread rule: reading is safe from any thread; a class is set up by one thread (ZORRegisterClass).
class ZOR_EXPORT ZORMetaClass
{
public:
    // A metaobject of its own, outside the registry: that of an adapter class. `iImplementation` is
    // the metaobject of the class the adapter stands for; like `iParent` it may be null, and is not
    // owned. The name is copied. REQUIRES: `iName` is not null.
    ZORMetaClass(const char* iName, ZORMetaClass* iParent, ZORMetaClass* iImplementation,
                 ZORClassKind iKind);
    // A bare metaobject, with a name only, which is copied. REQUIRES: `iName` is not null.
    explicit ZORMetaClass(const char* iName);
    ~ZORMetaClass();
    ZORMetaClass(const ZORMetaClass&) = delete;
    ZORMetaClass& operator=(const ZORMetaClass&) = delete;

    // The name; never null, valid as long as the metaobject.
    const char* GetClassName() const { return _Name.c_str(); }

    // Whether the class has its identifier: not until SetClassId, and GetClassId is all zero until
    // then.
    bool HasClassId() const { return _HasClassId.load(std::memory_order_acquire); }
    const GUID& GetClassId() const { return _ClassId; }
    // Gives the class its identifier, once: a later call changes nothing.
    void SetClassId(const GUID& iClassId);

    // What is described: ZORKindUnknown until it is set.
    ZORClassKind GetKind() const { return _Kind.load(std::memory_order_acquire); }
    void SetKind(ZORClassKind iKind) { _Kind.store(iKind, std::memory_order_release); }

    // The class this one is based on, or null; not owned.
    ZORMetaClass* GetParent() const { return _Parent.load(std::memory_order_acquire); }
    void SetParent(ZORMetaClass* iParent) { _Parent.store(iParent, std::memory_order_release); }
    // Makes a parent of `iParent` unless the class has an identifier or a parent already.
    void SetFirstParent(ZORMetaClass* iParent);

    // Of an adapter class: the class it stands for; else null.
    ZORMetaClass* GetImplementation() const { return _Implementation; }

    // 1 when this class or one of its ancestors bears the name; else 0 (also for null).
    int IsAKindOf(const char* iClassName) const;

    // The classes that have a dictionary entry for the interface, in the order the entries were
    // made, those of dictionary files included; null when there is none (or no name). The chain
    // belongs to the platform and stays valid until an entry for that interface is made or
    // withdrawn. The first call reads the dictionary files; no library is loaded.
    static const ZORSupportedClass* ListOfSupportedClass(const char* iInterfaceName);

private:
    std::string _Name;
    GUID _ClassId{};
    std::atomic<bool> _HasClassId{false};
    std::atomic<ZORClassKind> _Kind{ZORKindUnknown};
    std::atomic<ZORMetaClass*> _Parent{nullptr};
    ZORMetaClass* _Implementation = nullptr;
};

// The registered metaobject of that name or identifier, or null (also for a null name).
ZOR_EXPORT ZORMetaClass* QueryMetaObject(const char* iClassName);
ZOR_EXPORT ZORMetaClass* QueryMetaObject(const GUID& iClassId);

// The registered metaobject of that name, made bare when there is none yet; null for a null name.
ZOR_EXPORT ZORMetaClass* fct_FindMetaObject(const char* iClassName);

// Registers a class: finds or makes its metaobject, gives it an identifier and the dictionary
// entry "MetaObject" when it has none yet, then sets its kind and parent (null for a root). Returns
// the metaobject, never null. Every class does this once, in its static MetaObject() (see
// ZORClass.h). REQUIRES: `iClassName` is not null.
ZOR_EXPORT ZORMetaClass* ZORRegisterClass(const char* iClassName, ZORClassKind iKind,
                                          ZORMetaClass* iParent);
