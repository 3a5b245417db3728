#pragma once

#include "ZORExport.h"
#include "ZORGuid.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

class ZORMetaClass;

// Results of the query by identifier, ZORBaseUnknown::QueryInterface.
enum ZORQueryResult : int {
    ZORInterfaceFound = 0, // the out parameter holds the interface, with a reference
    ZORNoInterface = 1,    // it is null
};

// Root of every component, interface and adapter: reference counting, identity, interface queries.
//
//     ZORBaseUnknown* object = new SomeComponent;      // one reference, the caller's
//     ZORBaseUnknown* other = object->QueryInterface("SomeInterface");
//     if (other)
//         other->Release();
//     object->Release();                               // the last one destroys it
//
// An object and the adapters that show its interfaces share one reference count and one life: an
// adapter is made by the first query for its interface, answers every later one, and goes with
// its object. A reference to any of them therefore keeps all of them, and all of them are equal.
//
// `new` of a component yields null when there is no memory; nothing is thrown.
//
// Thread rule: counting and queries may be done from several threads at once, and the last
// reference may go in any of them: the destructors then run there. The count is plain while the
// process has a single thread.
//
// The order of the virtual operations is part of the binary interface.
class ZOR_EXPORT ZORBaseUnknown
{
public:
    // A new object has one reference, its creator's.
    ZORBaseUnknown();
    // A copy is an object of its own: one reference and no adapters, whatever the source has.
    ZORBaseUnknown(const ZORBaseUnknown& iOther);
    // Leaves count and adapters of both sides alone.
    ZORBaseUnknown& operator=(const ZORBaseUnknown& iOther);

    // Asks for the interface (or class) with the identifier `iInterface`. On success *oInterface is
    // a pointer of that type with a reference of its own and the result is ZORInterfaceFound;
    // otherwise *oInterface is null, the count is as it was and the result is ZORNoInterface (also
    // when `oInterface` is null).
    // An adapter answers for its object. Costs no allocation once the adapter exists. The first
    // query that loaded code has no answer for reads the dictionary files; one that such a file
    // answers loads the library named there, and raises a ZORInternalError when that cannot be done
    // (see ZORDictionaryDirectories.h).
    virtual int QueryInterface(const GUID& iInterface, void** oInterface);
    // Adds a reference and returns the new count.
    virtual unsigned int AddRef();
    // Drops a reference and returns the count left; at 0 the object and its adapters are gone.
    // Queries, AddRef and Release from inside the destructors of the object and of its adapters are
    // safe. What they give must not be kept beyond the destructor.
    virtual unsigned int Release();
    // Called by the last Release. Objects on the stack, which nobody may hold a reference to, go
    // this way by themselves.
    virtual ~ZORBaseUnknown();

    // The metaobject of the object's class; never null, never freed.
    virtual ZORMetaClass* GetMetaObject() const;
    // The name of the object's class.
    virtual const char* IsA() const;
    // 1 when the object's class or one of its ancestors is named `iClassName`, else 0 (also for
    // null).
    virtual int IsAKindOf(const char* iClassName) const;
    // 0: this is an object. Proxies for absent objects answer 1.
    virtual int IsNull() const;
    // 1 when both are, or are adapters of, the same object; else 0 (also for null).
    virtual int IsEqual(const ZORBaseUnknown* iOther) const;
    // Makes this new object an adapter of `iObject` (of its object, when that is an adapter
    // itself): from now on both share one count, to which this call adds the adapter's own
    // reference, and the object destroys the adapter when it goes. REQUIRES: `iObject` is not null;
    // this object is not bound yet and nobody holds another reference to it.
    virtual void SetImpl(ZORBaseUnknown* iObject);
    // As the query by identifier, by the interface's name: the interface with a reference of its
    // own, or null.
    virtual ZORBaseUnknown* QueryInterface(const char* iInterfaceName) const;

    // The metaobject, identifier and name of this class; never freed. Every class that says
    // ZOR_DECLARE_CLASS has these three of its own.
    static ZORMetaClass* MetaObject();
    static const GUID& ClassId();
    static const char* ClassName();

    // Memory for one component, from malloc; null when there is none.
    static void* operator new(std::size_t iSize) noexcept;
    static void* operator new(std::size_t iSize, const std::nothrow_t&) noexcept;
    // A component in memory that the caller has: takes none and gives none back.
    static void* operator new(std::size_t, void* iPlace) noexcept { return iPlace; }
    // Gives the memory of a component back; nothing for null.
    static void operator delete(void* iMemory) noexcept;
    static void operator delete(void* iMemory, const std::nothrow_t&) noexcept;
    // Nothing: the memory is the caller's.
    static void operator delete(void*, void*) noexcept {}

protected:
    // The object behind an adapter; the object itself for anything else.
    ZORBaseUnknown* GetImpl() const { return _Object; }
    // Adds a reference unless the last one is gone already: for platform classes that know of an
    // object without holding it. The object's memory must still be there.
    ZOR_HIDDEN bool AddRefIfAlive();

private:
    friend void TieConstructor(ZORBaseUnknown*, ZORBaseUnknown*, const GUID&, const GUID&);
    friend bool ZORIsOfClass(const ZORBaseUnknown*, const ZORMetaClass*);

    template <class Matches>
    ZOR_HIDDEN ZORBaseUnknown* FindAdapter(Matches iMatches) const;
    ZOR_HIDDEN int QueryObject(const GUID& iInterface, void** oInterface);
    ZOR_HIDDEN ZORBaseUnknown* FindOrMake(const ZORMetaClass* iInterface);
    ZOR_HIDDEN void LeaveAdapters();
    ZOR_HIDDEN unsigned int Destroy();

    std::atomic<std::uint32_t> _Count{1};
    ZORBaseUnknown* _Object = this;                  // of an adapter: what it stands for;
                                                     // of an object: itself
    std::atomic<ZORBaseUnknown*> _Adapters{nullptr}; // of an object: its adapters, oldest first;
                                                     // of an adapter: the next one in that list
    const ZORMetaClass* _Interface = nullptr;        // of an adapter: what it shows
};
