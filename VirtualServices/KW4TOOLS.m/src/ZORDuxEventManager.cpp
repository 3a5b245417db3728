#include "ZORDuxEventManager.h"

#include "ZORCallbackManager.h"

#include <atomic>
#include <new>

ZORDuxEventManager* ZORDuxEventManager::_EventManager = nullptr;

ZORDuxEventManager::ZORDuxEventManager() : _CallbackManager(nullptr)
{
    try {
        _CallbackManager = new ZORCallbackManager;
    } catch (const std::bad_alloc&) { // dispatching does nothing without one
    }
}

ZORDuxEventManager::~ZORDuxEventManager()
{
    delete _CallbackManager;
}

ZORDuxEventManager* ZORDuxEventManager::GetEventManager()
{
    const std::atomic_ref<ZORDuxEventManager*> shared(_EventManager);
    ZORDuxEventManager* present = shared.load(std::memory_order_acquire);
    if (present)
        return present;
    auto* const made = new ZORDuxEventManager;
    if (!made || shared.compare_exchange_strong(present, made))
        return made;
    made->Release(); // another thread was faster
    return present;
}

void ZORDuxEventManager::DispatchEvent(const char* iEvent, ZORNotification* iNotification)
{
    if (ZORDuxEventManager* const manager = GetEventManager())
        manager->Dispatch(iEvent, iNotification);
}

void ZORDuxEventManager::Dispatch(const char* iEvent, ZORNotification* iNotification)
{
    if (_CallbackManager)
        _CallbackManager->DispatchCallbacks(iEvent, iNotification, this);
}

ZORCallbackManager* ZORDuxEventManager::GetCallbackManager()
{
    return _CallbackManager;
}
