#include "ZORBaseUnknown.h"

#include "CreatorSearch.h"
#include "DictionaryFiles.h"
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
    if (!__libc_single_threaded) [[unlikely]]
        return ioCount.fetch_add(1, std::memory_order_relaxed) + 1;
    const std::uint32_t count = ioCount.load(std::memory_order_relaxed) + 1;
    ioCount.store(count, std::memory_order_relaxed);
    return count;
}

std::uint32_t Drop(std::atomic<std::uint32_t>& ioCount)
{
    if (!__libc_single_threaded) [[unlikely]]
        return ioCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    const std::uint32_t count = ioCount.load(std::memory_order_relaxed) - 1;
    ioCount.store(count, std::memory_order_relaxed);
    return count;
}

} // namespace

ZOR_IMPLEMENT_CLASS_STATICS(ZORBaseUnknown,
                            ZORRegisterClass("ZORBaseUnknown", ZORKindImplementation, nullptr))
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
    if (_Object != this) {
        LeaveAdapters();
        return;
    }
    _Count.store(kBeingDestroyed,
                 std::memory_order_relaxed); // objects on the stack come this way only
    // One at a time: an adapter's destructor may query, and so add another one.
    while (ZORBaseUnknown* const adapter = _Adapters.load(std::memory_order_acquire))
        delete adapter;
}

// Undoes SetImpl. The adapter is the first of the list, unless the constructor of its class raised.
void ZORBaseUnknown::LeaveAdapters()
{
    std::atomic<ZORBaseUnknown*>* place = &_Object->_Adapters;
    while (ZORBaseUnknown* const adapter = place->load(std::memory_order_acquire)) {
        if (adapter == this) {
            place->store(_Adapters.load(std::memory_order_acquire), std::memory_order_release);
            Drop(_Object->_Count);
            return;
        }
        place = &adapter->_Adapters;
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
    return left == 0 ? object->Destroy() : left;
}

// Apart from Release, which needs a frame for nothing else. Returns the count left: none.
[[gnu::noinline]] unsigned int ZORBaseUnknown::Destroy()
{
    _Count.store(kBeingDestroyed, std::memory_order_relaxed);
    delete this;
    return 0;
}

bool ZORBaseUnknown::AddRefIfAlive()
{
    std::atomic<std::uint32_t>& counted = GetImpl()->_Count;
    std::uint32_t count = counted.load(std::memory_order_relaxed);
    while (count != 0 && count < kBeingDestroyed)
        if (counted.compare_exchange_weak(count, count + 1, std::memory_order_relaxed))
            return true;
    return false;
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
    std::atomic<ZORBaseUnknown*>* place = &object->_Adapters;
    ZORBaseUnknown* taken = nullptr;
    while (!place->compare_exchange_strong(taken, this, std::memory_order_acq_rel,
                                           std::memory_order_acquire)) {
        place = &taken->_Adapters;
        taken = nullptr;
    }
}

// The oldest adapter that shows a matching interface, without a reference; or null.
template <class Matches>
ZORBaseUnknown* ZORBaseUnknown::FindAdapter(Matches iMatches) const
{
    const ZORBaseUnknown* const object = GetImpl();
    for (ZORBaseUnknown* adapter = object->_Adapters.load(std::memory_order_acquire); adapter;
         adapter = adapter->_Adapters.load(std::memory_order_acquire))
        if (adapter->_Interface && iMatches(adapter->_Interface))
            return adapter;
    return nullptr;
}

// What the object itself is comes first, then what the dictionary knows for its class. A late type
// has no identifier: it names no class of which the object could be.
ZORBaseUnknown* ZORBaseUnknown::FindOrMake(const ZORMetaClass* iInterface)
{
    ZORBaseUnknown* const object = GetImpl();
    ZORMetaClass* const own = object->GetMetaObject();
    for (const ZORMetaClass* meta = own; meta; meta = meta->GetParent())
        if (meta == iInterface && meta->HasClassId()) {
            object->AddRef();
            return object;
        }
    const ZORCreator creator = FindCreator(own, iInterface);
    ZORBaseUnknown* const made = creator ? creator(object) : nullptr;
    if (!made)
        return nullptr;
    // When two threads ask at once both make an adapter and the older one answers; as they share
    // one count, the reference that came with the other serves for it.
    ZORBaseUnknown* const oldest =
        FindAdapter([&](const ZORMetaClass* shown) { return shown == iInterface; });
    return oldest ? oldest : made;
}

int ZORBaseUnknown::QueryInterface(const GUID& iInterface, void** oInterface)
{
    if (!oInterface)
        return ZORNoInterface;
    ZORBaseUnknown* const found =
        FindAdapter([&](const ZORMetaClass* shown) { return shown->GetClassId() == iInterface; });
    if (!found)
        return QueryObject(iInterface, oInterface);
    *oInterface = found;
    found->AddRef();
    return ZORInterfaceFound;
}

// Apart from QueryInterface, which is mostly answered by an adapter that is there.
[[gnu::noinline]] int ZORBaseUnknown::QueryObject(const GUID& iInterface, void** oInterface)
{
    *oInterface = nullptr;
    if (const ZORMetaClass* const interface = QueryMetaObject(iInterface))
        *oInterface = FindOrMake(interface);
    return *oInterface ? ZORInterfaceFound : ZORNoInterface;
}

ZORBaseUnknown* ZORBaseUnknown::QueryInterface(const char* iInterfaceName) const
{
    GetImpl()->GetMetaObject(); // registers the object's own classes, so that their names are known
    const ZORMetaClass* interface = QueryMetaObject(iInterfaceName);
    if (!interface && iInterfaceName) {
        ReadDictionaryFiles(); // they may know the name
        interface = QueryMetaObject(iInterfaceName);
    }
    if (!interface)
        return nullptr;
    ZORBaseUnknown* const found =
        FindAdapter([&](const ZORMetaClass* shown) { return shown == interface; });
    if (!found)
        return GetImpl()->FindOrMake(interface);
    found->AddRef();
    return found;
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
