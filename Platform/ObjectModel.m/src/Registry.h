#pragma once

#include "ZORDictionary.h"
#include "ZORMetaClass.h"

#include <deque>
#include <list>
#include <memory>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// Every registered metaobject, by name and by identifier, and the adapter entries between them.
// One per process, made on first use and never torn down, so that code that runs at exit finds it.
class Registry
{
public:
    static Registry& Instance();

    ZORMetaClass* Query(std::string_view iClassName) const;
    ZORMetaClass* Query(const GUID& iClassId) const;
    ZORMetaClass* Find(std::string_view iClassName);
    void Identify(const GUID& iClassId, ZORMetaClass* iMetaObject);

    void AddAdapter(const char* iClassName, const char* iInterfaceName, ZORCreator iCreator);
    // Withdraws the entries of the pair made with `iCreator`, or all of them for a null one.
    int RemoveAdapters(const char* iClassName, const char* iInterfaceName, ZORCreator iCreator);
    // Who makes the adapter for the class or, failing that, for its nearest ancestor; or null.
    ZORCreator FindCreator(const ZORMetaClass* iClass, const ZORMetaClass* iInterface) const;
    const ZORSupportedClass* Supported(std::string_view iInterfaceName) const;

private:
    using Pair = std::pair<const ZORMetaClass*, const ZORMetaClass*>;
    struct Hash {
        std::size_t operator()(const Pair& iPair) const;
        std::size_t operator()(const GUID& iId) const;
    };

    ZORMetaClass* FindLocked(std::string_view iClassName);
    void AddSupported(const ZORMetaClass* iInterface, const char* iClassName);
    void RemoveSupported(const ZORMetaClass* iInterface, const char* iClassName);

    mutable std::shared_mutex _Mutex;
    // The keys are the metaobjects' own names.
    std::unordered_map<std::string_view, std::unique_ptr<ZORMetaClass>> _ByName;
    std::unordered_map<GUID, ZORMetaClass*, Hash> _ById;
    std::unordered_map<Pair, std::vector<ZORCreator>, Hash> _Creators; // the first one answers
    std::unordered_map<const ZORMetaClass*, std::list<ZORSupportedClass>> _Supported;
};
