#include "ZORBaseUnknown.h"

#include "Registry.h"
#include "ZORClass.h"

#include <cstdlib>
#include <sys/single_threaded.h>

namespace
{

// The count of an object whose destructor runs: far from 0, so that references taken and dropped in
// there do not destroy it a second time.
constexpr std::uint32_t kBeingDestroyed = 1U << 30;

std::uint32_t Add(std::atomic<std::uint32_t>& ioCount)
{
    if (!__libc_single_threaded)
        return ioCount.fetch_add(1, std::memory_order_relaxed) + 1;
    const std::uint32_t count = ioCount.load(std::memory_order_relaxed) + 1;
    ioCount.store(count, std::memory_order_relaxed);
    return count;
}

std::uint32_t Drop(std::atomic<std::uint32_t>& ioCount)
{
    if (!__libc_single_threaded)
        return ioCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    const std::uint32_t count = ioCount.load(std::memory_order_relaxed) - 1;
    ioCount.store(count, std::memory_order_relaxed);
    return count;
}

} // namespace

ZORMetaClass* ZORBaseUnknown::MetaObject()
{
    static ZORMetaClass* const meta =
        ZORRegisterClass("ZORBaseUnknown", ZORKindImplementation, nullptr);
    return meta;
}

const GUID& ZORBaseUnknown::ClassId()
{
    return MetaObject()->GetClassId();
}
const char* ZORBaseUnknown::ClassName()
{
    return MetaObject()->GetClassName();
}
ZOR_IMPLEMENT_CLASS_VIRTUALS(ZORBaseUnknown)

ZORBaseUnknown::ZORBaseUnknown() = default;

ZORBaseUnknown::ZORBaseUnknown(const ZORBaseUnknown&) {}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
ZORBaseUnknown& ZORBaseUnknown::operator=(const ZORBaseUnknown&)
{
    return *this;
}

ZORBaseUnknown::~ZORBaseUnknown()
{
    if (_Object)
        return;
    ZORBaseUnknown* adapter = _Adapters.load(std::memory_order_acquire);
    while (adapter) {
        ZORBaseUnknown* const next = adapter->_Adapters.load(std::memory_order_relaxed);
        delete adapter;
        adapter = next;
    }
}

unsigned int ZORBaseUnknown::AddRef()
{
    return Add(GetImpl()->_Count);
}

unsigned int ZORBaseUnknown::Release()
{
    ZORBaseUnknown* const object = GetImpl();
    const std::uint32_t left = Drop(object->_Count);
    if (left == 0) {
        object->_Count.store(kBeingDestroyed, std::memory_order_relaxed);
        delete object;
    }
    return left;
}

int ZORBaseUnknown::IsNull() const
{
    return 0;
}

int ZORBaseUnknown::IsEqual(const ZORBaseUnknown* iOther) const
{
    return iOther && GetImpl() == iOther->GetImpl();
}

void ZORBaseUnknown::SetImpl(ZORBaseUnknown* iObject)
{
    ZORBaseUnknown* const object = iObject->GetImpl();
    object->AddRef();
    _Object = object;
    ZORBaseUnknown* head = object->_Adapters.load(std::memory_order_relaxed);
    do
        _Adapters.store(head, std::memory_order_relaxed);
    while (!object->_Adapters.compare_exchange_weak(head, this, std::memory_order_release,
                                                    std::memory_order_relaxed));
}

template <class Matches>
ZORBaseUnknown* ZORBaseUnknown::FindAdapter(Matches iMatches) const
{
    const ZORBaseUnknown* const object = GetImpl();
    for (ZORBaseUnknown* adapter = object->_Adapters.load(std::memory_order_acquire); adapter;
         adapter = adapter->_Adapters.load(std::memory_order_acquire))
        if (adapter->_Interface && iMatches(adapter->_Interface)) {
            adapter->AddRef();
            return adapter;
        }
    return nullptr;
}

// What the object itself is comes first, then what the dictionary knows for its class.
ZORBaseUnknown* ZORBaseUnknown::FindOrMake(const ZORMetaClass* iInterface)
{
    ZORBaseUnknown* const object = GetImpl();
    ZORMetaClass* const own = object->GetMetaObject();
    for (const ZORMetaClass* meta = own; meta; meta = meta->GetParent())
        if (meta == iInterface) {
            object->AddRef();
            return object;
        }
    const ZORCreator creator = Registry::Instance().FindCreator(own, iInterface);
    return creator ? creator(object) : nullptr;
}

int ZORBaseUnknown::QueryInterface(const GUID& iInterface, void** oInterface)
{
    if (!oInterface)
        return ZORNoInterface;
    ZORBaseUnknown* found =
        FindAdapter([&](const ZORMetaClass* shown) { return shown->GetClassId() == iInterface; });
    if (!found)
        if (const ZORMetaClass* const interface = QueryMetaObject(iInterface))
            found = FindOrMake(interface);
    *oInterface = found;
    return found ? ZORInterfaceFound : ZORNoInterface;
}

ZORBaseUnknown* ZORBaseUnknown::QueryInterface(const char* iInterfaceName) const
{
    GetImpl()->GetMetaObject(); // registers the object's own classes, so that their names are known
    const ZORMetaClass* const interface = QueryMetaObject(iInterfaceName);
    if (!interface)
        return nullptr;
    if (ZORBaseUnknown* const found =
            FindAdapter([&](const ZORMetaClass* shown) { return shown == interface; }))
        return found;
    return GetImpl()->FindOrMake(interface);
}

void* ZORBaseUnknown::operator new(std::size_t iSize) noexcept
{
    return std::malloc(iSize);
}

void* ZORBaseUnknown::operator new(std::size_t iSize, const std::nothrow_t&) noexcept
{
    return std::malloc(iSize);
}

void ZORBaseUnknown::operator delete(void* iMemory) noexcept
{
    std::free(iMemory);
}

void ZORBaseUnknown::operator delete(void* iMemory, const std::nothrow_t&) noexcept
{
    std::free(iMemory);
}
