#include "Registry.h"

#include "KeepAcrossForks.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <mutex>
#include <sys/single_threaded.h>

Registry& Registry::Instance()
{
    static Registry* const registry = new Registry;
    return *registry;
}

Registry::Registry()
{
    KeepAcrossForks<&Lock>();
}

std::shared_mutex& Registry::Lock()
{
    return Instance()._Mutex;
}

std::size_t Registry::Hash::operator()(const Pair& iPair) const
{
    const std::hash<const ZORMetaClass*> hash;
    return hash(iPair.first) * 31 + hash(iPair.second);
}

std::size_t Registry::Hash::operator()(const GUID& iId) const
{
    std::size_t bits; // identifiers are random: any of their bits will do
    std::memcpy(&bits, iId.bytes.data(), sizeof bits);
    return bits;
}

// There is nobody to wait for while the process has a single thread, and no reader starts another.
std::shared_lock<std::shared_mutex> Registry::Reading() const
{
    if (__libc_single_threaded)
        return std::shared_lock(_Mutex, std::defer_lock);
    return std::shared_lock(_Mutex);
}

ZORMetaClass* Registry::Query(std::string_view iClassName) const
{
    const std::shared_lock lock = Reading();
    return QueryLocked(iClassName);
}

ZORMetaClass* Registry::Query(const GUID& iClassId) const
{
    const std::shared_lock lock = Reading();
    const auto found = _ById.find(iClassId);
    return found == _ById.end() ? nullptr : found->second;
}

ZORMetaClass* Registry::Find(std::string_view iClassName)
{
    const std::unique_lock lock(_Mutex);
    return FindLocked(iClassName);
}

ZORMetaClass* Registry::QueryLocked(std::string_view iClassName) const
{
    const auto found = _ByName.find(iClassName);
    return found == _ByName.end() ? nullptr : found->second.get();
}

ZORMetaClass* Registry::FindLocked(std::string_view iClassName)
{
    if (ZORMetaClass* const known = QueryLocked(iClassName))
        return known;
    auto made = std::make_unique<ZORMetaClass>(std::string(iClassName).c_str());
    return _ByName.emplace(made->GetClassName(), std::move(made)).first->second.get();
}

void Registry::Identify(const GUID& iClassId, ZORMetaClass* iMetaObject)
{
    const std::unique_lock lock(_Mutex);
    _ById.emplace(iClassId, iMetaObject);
}

Registry::Pair Registry::PairOf(const char* iClassName, const char* iInterfaceName)
{
    return {FindLocked(iClassName), FindLocked(iInterfaceName)};
}

// Lists the class among those that support the interface when these are its first entries.
Registry::Entries& Registry::EntriesOf(const Pair& iPair)
{
    const auto [found, isNew] = _Entries.try_emplace(iPair);
    if (isNew) {
        Chain& chain = _Supported[iPair.second];
        chain.push_back({iPair.first->GetClassName(), nullptr});
        const auto added = std::prev(chain.end());
        if (added != chain.begin())
            std::prev(added)->next = &*added;
        found->second.supported = added;
    }
    return found->second;
}

void Registry::Forget(EntriesByPair::iterator iEntries)
{
    Chain& chain = _Supported[iEntries->first.second];
    const auto supported = iEntries->second.supported;
    if (supported != chain.begin())
        std::prev(supported)->next = supported->next;
    chain.erase(supported);
    _Entries.erase(iEntries);
}

void Registry::AddAdapter(const char* iClassName, const char* iInterfaceName, ZORCreator iCreator)
{
    const std::unique_lock lock(_Mutex);
    EntriesOf(PairOf(iClassName, iInterfaceName)).creators.push_back(iCreator);
}

void Registry::Declare(const char* iClassName, const char* iInterfaceName,
                       std::shared_ptr<DeclaredAdapter> iDeclared)
{
    const std::unique_lock lock(_Mutex);
    std::shared_ptr<DeclaredAdapter>& declared =
        EntriesOf(PairOf(iClassName, iInterfaceName)).declared;
    if (!declared)
        declared = std::move(iDeclared);
}

void Registry::RemoveAdapter(const char* iClassName, const char* iInterfaceName,
                             ZORCreator iCreator)
{
    const std::unique_lock lock(_Mutex);
    const Pair pair{QueryLocked(iClassName), QueryLocked(iInterfaceName)};
    const auto found = _Entries.find(pair);
    if (found == _Entries.end())
        return;
    std::vector<ZORCreator>& creators = found->second.creators;
    const auto each = std::find(creators.begin(), creators.end(), iCreator);
    if (each != creators.end())
        creators.erase(each);
    if (creators.empty() && !found->second.declared)
        Forget(found);
}

int Registry::RemoveAll(const char* iClassName, const char* iInterfaceName)
{
    const std::unique_lock lock(_Mutex);
    const Pair pair{QueryLocked(iClassName), QueryLocked(iInterfaceName)};
    const auto found = _Entries.find(pair);
    if (found == _Entries.end())
        return 0;
    const auto count = found->second.creators.size() + (found->second.declared ? 1 : 0);
    Forget(found);
    return static_cast<int>(count);
}

Registry::Found Registry::FindCreator(const ZORMetaClass* iClass,
                                      const ZORMetaClass* iInterface) const
{
    const std::shared_lock lock = Reading();
    for (const ZORMetaClass* each = iClass; each; each = each->GetParent()) {
        const auto found = _Entries.find({each, iInterface});
        if (found == _Entries.end())
            continue;
        const std::vector<ZORCreator>& creators = found->second.creators;
        if (!creators.empty())
            return {creators.front(), nullptr, each != iClass};
        return {nullptr, found->second.declared, each != iClass};
    }
    return {};
}

const ZORSupportedClass* Registry::Supported(std::string_view iInterfaceName) const
{
    const std::shared_lock lock = Reading();
    const auto interface = _ByName.find(iInterfaceName);
    if (interface == _ByName.end())
        return nullptr;
    const auto found = _Supported.find(interface->second.get());
    return found == _Supported.end() || found->second.empty() ? nullptr : &found->second.front();
}
