#pragma once

#include "ZORBaseUnknown.h"

#include <cstddef>
#include <utility>

// A handle on an interface: holds one reference and gives it back when it goes. The names that end
// in _var (ZORBaseUnknown_var, ZORIDuxServices_var, …) are handles.
//
//     ZORIDuxServices_var services = CreateServices();
//     ZORUnicodeString path = services->SearchPath("plate.model");
//
// A handle made from a component asks it for the interface; when the component does not offer it,
// or is null, the handle is null. Using a null handle is a breach. Thread rule: two threads may use
// two handles on one object, not one handle.
template <class Interface>
class ZORHandle
{
public:
    // A null handle.
    ZORHandle() = default;
    ZORHandle(std::nullptr_t) {}
    // Takes over the caller's reference, that of a new object for example; null gives a null
    // handle.
    static ZORHandle Adopt(Interface* iInterface)
    {
        ZORHandle handle;
        handle._Interface = iInterface;
        return handle;
    }
    // Holds a reference of its own; the caller keeps the one it has.
    ZORHandle(Interface* iInterface) : _Interface(iInterface)
    {
        if (_Interface)
            _Interface->AddRef();
    }
    // Asks the component, or that of another handle, for the interface; a null handle when it does
    // not offer it, or is null. Raises what the query raises (see ZORBaseUnknown::QueryInterface).
    template <class Other, class = decltype(static_cast<ZORBaseUnknown*>(std::declval<Other*>()))>
    ZORHandle(Other* iComponent) : _Interface(Query(iComponent))
    {
    }
    template <class Other>
    ZORHandle(const ZORHandle<Other>& iOther) : _Interface(Query(iOther.Get()))
    {
    }
    // A handle on the same interface, with a reference of its own.
    ZORHandle(const ZORHandle& iOther) : ZORHandle(iOther._Interface) {}
    // Takes the reference over; leaves the other null.
    ZORHandle(ZORHandle&& iOther) noexcept : _Interface(std::exchange(iOther._Interface, nullptr))
    {
    }
    // Gives back what is held and takes over what the other holds; null empties the handle.
    ZORHandle& operator=(ZORHandle iOther) noexcept
    {
        std::swap(_Interface, iOther._Interface);
        return *this;
    }
    ~ZORHandle()
    {
        if (_Interface)
            _Interface->Release();
    }

    // The interface, without a reference for the caller: valid while a handle holds it. Null for a
    // null handle.
    Interface* Get() const { return _Interface; }
    // The same, for a call. REQUIRES: the handle is not null.
    Interface* operator->() const { return _Interface; }
    Interface& operator*() const { return *_Interface; }
    // Whether the handle holds an interface.
    explicit operator bool() const { return _Interface != nullptr; }

private:
    static Interface* Query(ZORBaseUnknown* iComponent)
    {
        void* found = nullptr;
        if (iComponent)
            iComponent->QueryInterface(Interface::ClassId(), &found);
        return static_cast<Interface*>(found);
    }

    Interface* _Interface = nullptr;
};

// Two handles are equal when both are null or both lead to the same object.
template <class Left, class Right>
bool operator==(const ZORHandle<Left>& iLeft, const ZORHandle<Right>& iRight)
{
    return iLeft && iRight ? iLeft->IsEqual(iRight.Get()) != 0 : !iLeft && !iRight;
}

// Two handles differ when one alone is null or they lead to different objects.
template <class Left, class Right>
bool operator!=(const ZORHandle<Left>& iLeft, const ZORHandle<Right>& iRight)
{
    return !(iLeft == iRight);
}

// A handle on any component.
using ZORBaseUnknown_var = ZORHandle<ZORBaseUnknown>;
