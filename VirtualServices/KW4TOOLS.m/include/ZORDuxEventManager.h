#pragma once

#include "ZORBaseUnknown.h"

class ZORCallbackManager;
class ZORNotification;

// The publisher of named events of the whole process: any module sends an event, and every callback
// that another registered for it is called.
//
//     ZORCallbackManager* callbacks = ZORDuxEventManager::GetEventManager()->GetCallbackManager();
//     ZORCallback opened = callbacks->AddCallback("PartOpened", OnPartOpened, this);
//     …
//     ZORDuxNotification* notification = new ZORDuxNotification(part, nullptr);
//     ZORDuxEventManager::DispatchEvent("PartOpened", notification);
//     notification->Release();
//     …
//     callbacks->RemoveCallback(opened);
//
// What callbacks get, and what they may do meanwhile, is told in ZORCallbackManager.h. The class
// has no metaobject of its own: IsA answers "ZORBaseUnknown".
//
// Thread rule: one thread; the first GetEventManager may come from several at once.
class ZOR_EXPORT ZORDuxEventManager : public ZORBaseUnknown
{
public:
    // A publisher of its own; that of the process is made by GetEventManager.
    ZORDuxEventManager();
    // Destroys the callback manager.
    ~ZORDuxEventManager() override;
    ZORDuxEventManager(const ZORDuxEventManager&) = delete;
    ZORDuxEventManager& operator=(const ZORDuxEventManager&) = delete;

    // The publisher of the process, made on the first call and never destroyed; no reference for
    // the caller. Null when there is no memory for it.
    static ZORDuxEventManager* GetEventManager();
    // Has the publisher of the process Dispatch the event; does nothing when there is none.
    static void DispatchEvent(const char* iEvent, ZORNotification* iNotification);

    // Calls the event's callbacks, with this manager as the sender. A null name, or one that nobody
    // registered for, does nothing. The notification stays the caller's; it may be null. Raises the
    // first error that a callback raised, after all had their call.
    void Dispatch(const char* iEvent, ZORNotification* iNotification);

    // Where modules register and remove their callbacks; owned by this manager, and as long-lived.
    // Null when there was no memory for it.
    ZORCallbackManager* GetCallbackManager();

private:
    static ZORDuxEventManager* _EventManager;

    ZORCallbackManager* _CallbackManager;
};
