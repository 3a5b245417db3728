#pragma once

#include "ZORExport.h"

#include <cstdint>
#include <memory>

class ZORBaseUnknown;
class ZORNotification;

// What is called for an event.
// - `iSender`: who sends the event, as DispatchCallbacks got it; null when it got null. It lives at
//   least until the dispatch ends.
// - `iEvent`: the event's name; valid until the call returns.
// - `iNotification`: what the sender brings along, unchanged; may be null. It is the sender's: keep
//   it beyond the call only with an AddRef.
// - `iData`: the pointer given to AddCallback.
// What it raises does not keep the other callbacks from being called (see DispatchCallbacks).
using ZORCallbackFunction = void (*)(ZORBaseUnknown* iSender, const char* iEvent,
                                     ZORNotification* iNotification, void* iData);

// Stands for one registered callback; no other registration of the same manager ever has the same
// number. 0 stands for none.
using ZORCallback = std::uint64_t;

// The callbacks of one sender of named events.
//
//     ZORCallback opened = manager->AddCallback("PartOpened", OnPartOpened, this, this);
//     manager->DispatchCallbacks("PartOpened", notification, sender);   // calls OnPartOpened
//     manager->RemoveCallback(opened);
//
// Callbacks may do anything during a dispatch: add and remove callbacks, their own included,
// dispatch the same or another event, destroy a subscriber, the sender or this manager.
// - A callback that is removed before its turn is not called.
// - A callback that is added is called by every dispatch that begins after that, and by no earlier
//   one.
// - After the manager is gone nothing more is called.
//
// The manager holds no reference to a subscriber while it is registered. A subscriber therefore
// removes its callbacks when it goes, at the latest in its destructor (RemoveSubscriberCallbacks).
// While its callback runs it is held by a reference, so one that drops its own last reference there
// is destroyed when the callback has returned.
//
// Cost: adding and removing by handle take constant time (with a subscriber: the logarithm of the
// number of callbacks, on adding), removing those of a subscriber that logarithm and as much for
// each; what removed callbacks leave is cleared away as it grows.
// Lack of memory is std::bad_alloc, on adding only, and changes nothing.
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORCallbackManager
{
public:
    // A manager without callbacks.
    ZORCallbackManager();
    // Forgets all callbacks; handles to them are void.
    ~ZORCallbackManager();
    ZORCallbackManager(const ZORCallbackManager&) = delete;
    ZORCallbackManager& operator=(const ZORCallbackManager&) = delete;

    // Registers a callback for the event of that name (bytes, compared whole; the empty name is a
    // name) and returns its handle; 0, and nothing registered, when the name or the function is
    // null. Registering the same function twice gives two callbacks.
    // `iSubscriber`, when not null, is the object the callback belongs to: it is held during the
    // call, and RemoveSubscriberCallbacks finds its callbacks by this very pointer.
    ZORCallback AddCallback(const char* iEvent, ZORCallbackFunction iFunction, void* iData,
                            ZORBaseUnknown* iSubscriber = nullptr);

    // Removes a callback. Returns 1, or 0 when there is none of that handle (any more).
    int RemoveCallback(ZORCallback iCallback);
    // Removes the callbacks of a subscriber, those of one event or all. Returns how many there
    // were; 0 for a null event or subscriber.
    int RemoveCallbacksOn(const char* iEvent, const ZORBaseUnknown* iSubscriber);
    int RemoveSubscriberCallbacks(const ZORBaseUnknown* iSubscriber);

    // Calls the callbacks of the event, in the order they were added. A null name, or one nobody
    // registered for, does nothing. `iSender` and `iNotification` are handed on as they are.
    // An error (or any other exception) that a callback raises is kept until all others had their
    // call; the first one then goes on to the caller, unchanged, and later ones are dropped.
    void DispatchCallbacks(const char* iEvent, ZORNotification* iNotification,
                           ZORBaseUnknown* iSender);

    // How many callbacks an event has; 0 for null.
    int GetNbCallbacks(const char* iEvent) const;

private:
    friend class ZOREventSubscriber;
    // Leads to true once the manager is gone, and then expires: for who knows of a manager that may
    // go first.
    ZOR_HIDDEN std::weak_ptr<const bool> Closed() const;

    class ZOR_HIDDEN Registrations;
    std::shared_ptr<Registrations> _Registrations; // a dispatch under way keeps it, too
};
