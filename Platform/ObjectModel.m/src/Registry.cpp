#include "Registry.h"

#include <cstring>
#include <mutex>

Registry& Registry::Instance()
{
    static Registry* const registry = new Registry;
    return *registry;
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

ZORMetaClass* Registry::Query(std::string_view iClassName) const
{
    const std::shared_lock lock(_Mutex);
    const auto found = _ByName.find(iClassName);
    return found == _ByName.end() ? nullptr : found->second.get();
}

ZORMetaClass* Registry::Query(const GUID& iClassId) const
{
    const std::shared_lock lock(_Mutex);
    const auto found = _ById.find(iClassId);
    return found == _ById.end() ? nullptr : found->second;
}

ZORMetaClass* Registry::Find(std::string_view iClassName)
{
    const std::unique_lock lock(_Mutex);
    return FindLocked(iClassName);
}

ZORMetaClass* Registry::FindLocked(std::string_view iClassName)
{
    const auto found = _ByName.find(iClassName);
    if (found != _ByName.end())
        return found->second.get();
    auto made = std::make_unique<ZORMetaClass>(std::string(iClassName).c_str());
    return _ByName.emplace(made->GetClassName(), std::move(made)).first->second.get();
}

void Registry::Identify(const GUID& iClassId, ZORMetaClass* iMetaObject)
{
    const std::unique_lock lock(_Mutex);
    _ById.emplace(iClassId, iMetaObject);
}

void Registry::AddAdapter(const char* iClassName, const char* iInterfaceName, ZORCreator iCreator)
{
    const std::unique_lock lock(_Mutex);
    const ZORMetaClass* const implementation = FindLocked(iClassName);
    const ZORMetaClass* const interface = FindLocked(iInterfaceName);
    std::vector<ZORCreator>& creators = _Creators[{implementation, interface}];
    creators.push_back(iCreator);
    if (creators.size() == 1)
        AddSupported(interface, implementation->GetClassName());
}

int Registry::RemoveAdapters(const char* iClassName, const char* iInterfaceName,
                             ZORCreator iCreator)
{
    const std::unique_lock lock(_Mutex);
    const ZORMetaClass* const implementation = FindLocked(iClassName);
    const ZORMetaClass* const interface = FindLocked(iInterfaceName);
    const auto found = _Creators.find({implementation, interface});
    if (found == _Creators.end())
        return 0;
    const auto removed = std::erase_if(
        found->second, [&](ZORCreator each) { return !iCreator || each == iCreator; });
    if (found->second.empty()) {
        _Creators.erase(found);
        RemoveSupported(interface, implementation->GetClassName());
    }
    return static_cast<int>(removed);
}

ZORCreator Registry::FindCreator(const ZORMetaClass* iClass, const ZORMetaClass* iInterface) const
{
    const std::shared_lock lock(_Mutex);
    for (; iClass; iClass = iClass->GetParent()) {
        const auto found = _Creators.find({iClass, iInterface});
        if (found != _Creators.end())
            return found->second.front();
    }
    return nullptr;
}

const ZORSupportedClass* Registry::Supported(std::string_view iInterfaceName) const
{
    const std::shared_lock lock(_Mutex);
    const auto interface = _ByName.find(iInterfaceName);
    if (interface == _ByName.end())
        return nullptr;
    const auto found = _Supported.find(interface->second.get());
    return found == _Supported.end() || found->second.empty() ? nullptr : &found->second.front();
}

void Registry::AddSupported(const ZORMetaClass* iInterface, const char* iClassName)
{
    std::list<ZORSupportedClass>& chain = _Supported[iInterface];
    ZORSupportedClass* const last = chain.empty() ? nullptr : &chain.back();
    chain.push_back({iClassName, nullptr});
    if (last)
        last->next = &chain.back();
}

void Registry::RemoveSupported(const ZORMetaClass* iInterface, const char* iClassName)
{
    std::list<ZORSupportedClass>& chain = _Supported[iInterface];
    chain.remove_if([&](const ZORSupportedClass& each) { return each.className == iClassName; });
    const ZORSupportedClass* next = nullptr;
    for (auto each = chain.rbegin(); each != chain.rend(); ++each)
        next = &(each->next = next, *each);
}
