#pragma once

#include "ZORIContainer.h"

#include <unordered_set>
#include <vector>

// A container that lives in memory: on its own, or as the ZORIContainer of another object, whose
// life it then shares.
//
//     static const ZORFillDictionary entry("SomeModel", "ZORIContainer", ZORCreateMemoryContainer);
//
// What its operations do is told in ZORIContainer.h. Adding a member takes constant time.
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORMemoryContainer final : public ZORIContainer
{
    ZOR_DECLARE_CLASS
public:
    // An empty container with a life of its own.
    ZORMemoryContainer();
    // An empty container that is an adapter of `iObject`, which is not null.
    explicit ZORMemoryContainer(ZORBaseUnknown* iObject);
    ZORMemoryContainer(const ZORMemoryContainer&) = delete;
    ZORMemoryContainer& operator=(const ZORMemoryContainer&) = delete;
    ~ZORMemoryContainer() override;

    int AddMember(ZORBaseUnknown* iMember) override;
    int RemoveMember(const ZORBaseUnknown* iMember) override;
    int CountMembers() const override;
    ZORBaseUnknown_var GetMember(int iNumber) const override;

private:
    std::vector<ZORBaseUnknown_var> _Members; // the objects themselves, whatever was added
    std::unordered_set<const ZORBaseUnknown*> _Present;
};

// A new in-memory container of the object, for the dictionary; null for null or when there is no
// memory.
ZOR_EXPORT ZORBaseUnknown* ZORCreateMemoryContainer(ZORBaseUnknown* iObject);
