#pragma once

#include "ZORClass.h"
#include "ZORHandle.h"

// The container of a model: the components that belong to it, in the order they were added.
//
//     container->AddMember(part);
//     for (int i = 1; i <= container->CountMembers(); ++i)
//         Show(container->GetMember(i));
//     container->RemoveMember(part);
//
// A component is a member once, by whichever of its interfaces it was added. The container holds a
// reference to each member and gives them back when it goes. Members that hold their container keep
// each other alive: take one of the two back by hand.
//
// The order of the operations is part of the binary interface.
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORIContainer : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // For the classes that implement the interface.
    ZORIContainer();
    ~ZORIContainer() override;

    // Adds a member behind the others. Returns 1; 0, and nothing changed, when it is one already,
    // for null, and for the container's own object. Lack of memory is std::bad_alloc and changes
    // nothing.
    virtual int AddMember(ZORBaseUnknown* iMember) = 0;
    // Takes a member out, and its reference back. Returns 1, or 0 when it is none. Costs a walk
    // over the members.
    virtual int RemoveMember(const ZORBaseUnknown* iMember) = 0;
    // The number of members.
    virtual int CountMembers() const = 0;
    // The member of that 1-based number; a null handle for any number from outside the container.
    virtual ZORBaseUnknown_var GetMember(int iNumber) const = 0;
};

// A handle on it.
using ZORIContainer_var = ZORHandle<ZORIContainer>;
