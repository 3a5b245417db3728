#pragma once

#include "ZORDictionary.h"
#include "ZORMetaClass.h"

#include <list>
#include <memory>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class DeclaredAdapter;

// Every registered metaobject, by name and by identifier, and the adapter entries between them.
// One per process, made on first use and never torn down, so that code that runs at exit finds it.
// A child forked while another thread is in here finds it unlocked.
class Registry
{
public:
    static Registry& Instance();

    ZORMetaClass* Query(std::string_view iClassName) const;
    ZORMetaClass* Query(const GUID& iClassId) const;
    ZORMetaClass* Find(std::string_view iClassName);
    void Identify(const GUID& iClassId, ZORMetaClass* iMetaObject);

    void AddAdapter(const char* iClassName, const char* iInterfaceName, ZORCreator iCreator);
    // Enters what a dictionary file declares, unless another one did for the same pair.
    void Declare(const char* iClassName, const char* iInterfaceName,
                 std::shared_ptr<DeclaredAdapter> iDeclared);
    // Withdraws one entry of the pair that was made with `iCreator`.
    void RemoveAdapter(const char* iClassName, const char* iInterfaceName, ZORCreator iCreator);
    // Withdraws all entries of the pair and returns how many there were.
    int RemoveAll(const char* iClassName, const char* iInterfaceName);

    // Who makes the adapter for a class.
    struct Found {
        ZORCreator creator = nullptr;              // of loaded code; if there is none,
        std::shared_ptr<DeclaredAdapter> declared; // of a dictionary file; both null: nobody
        bool ofAncestor = false;                   // found for an ancestor of the class
    };
    Found FindCreator(const ZORMetaClass* iClass, const ZORMetaClass* iInterface) const;
    const ZORSupportedClass* Supported(std::string_view iInterfaceName) const;

private:
    using Pair = std::pair<const ZORMetaClass*, const ZORMetaClass*>; // class, interface
    using Chain = std::list<ZORSupportedClass>;
    struct Entries {
        std::vector<ZORCreator> creators; // the first one answers
        std::shared_ptr<DeclaredAdapter> declared;
        Chain::iterator supported; // the class, among those that support the interface
    };
    struct Hash {
        std::size_t operator()(const Pair& iPair) const;
        std::size_t operator()(const GUID& iId) const;
    };
    using EntriesByPair = std::unordered_map<Pair, Entries, Hash>;

    Registry();
    ~Registry() = delete;

    static std::shared_mutex& Lock();
    ZORMetaClass* QueryLocked(std::string_view iClassName) const; // null if unknown
    // For reading: holds the lock for as long as the result lives.
    std::shared_lock<std::shared_mutex> Reading() const;
    ZORMetaClass* FindLocked(std::string_view iClassName); // made if unknown
    Pair PairOf(const char* iClassName, const char* iInterfaceName);
    Entries& EntriesOf(const Pair& iPair);
    void Forget(EntriesByPair::iterator iEntries);

    mutable std::shared_mutex _Mutex;
    // The keys are the metaobjects' own names.
    std::unordered_map<std::string_view, std::unique_ptr<ZORMetaClass>> _ByName;
    std::unordered_map<GUID, ZORMetaClass*, Hash> _ById;
    EntriesByPair _Entries;
    std::unordered_map<const ZORMetaClass*, Chain> _Supported; // by interface
};
