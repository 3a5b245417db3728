#include "ZORMemoryContainer.h"

#include "ZORTie.h"

#include <algorithm>

ZOR_IMPLEMENT_CLASS(ZORMemoryContainer, ZORKindImplementation, ZORIContainer)

namespace
{

// The object behind whatever it was asked of.
ZORBaseUnknown_var ObjectOf(const ZORBaseUnknown* iComponent)
{
    return ZORBaseUnknown_var::Adopt(
        iComponent ? iComponent->QueryInterface(ZORBaseUnknown::ClassName()) : nullptr);
}

} // namespace

ZORMemoryContainer::ZORMemoryContainer() = default;

ZORMemoryContainer::ZORMemoryContainer(ZORBaseUnknown* iObject)
{
    TieConstructor(this, iObject, ZORBaseUnknown::ClassId(), ZORIContainer::ClassId());
}

ZORMemoryContainer::~ZORMemoryContainer() = default;

int ZORMemoryContainer::AddMember(ZORBaseUnknown* iMember)
{
    const ZORBaseUnknown_var member = ObjectOf(iMember);
    if (!member || IsEqual(member.Get()) || !_Present.insert(member.Get()).second)
        return 0;
    try {
        _Members.push_back(member);
    } catch (...) {
        _Present.erase(member.Get());
        throw;
    }
    return 1;
}

int ZORMemoryContainer::RemoveMember(const ZORBaseUnknown* iMember)
{
    const ZORBaseUnknown_var member = ObjectOf(iMember);
    if (_Present.erase(member.Get()) == 0)
        return 0;
    _Members.erase(std::find_if(_Members.begin(), _Members.end(),
                                [&](const auto& each) { return each.Get() == member.Get(); }));
    return 1;
}

int ZORMemoryContainer::CountMembers() const
{
    return static_cast<int>(_Members.size());
}

ZORBaseUnknown_var ZORMemoryContainer::GetMember(int iNumber) const
{
    if (iNumber < 1 || iNumber > CountMembers())
        return nullptr;
    return _Members[static_cast<std::size_t>(iNumber) - 1];
}

ZORBaseUnknown* ZORCreateMemoryContainer(ZORBaseUnknown* iObject)
{
    return iObject ? new ZORMemoryContainer(iObject) : nullptr;
}
