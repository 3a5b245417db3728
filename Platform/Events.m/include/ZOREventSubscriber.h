#pragma once

#include "ZORCallbackManager.h"
#include "ZORClass.h"

#include <memory>

// An object that sends named events and receives those of others.
//
//     view->AddCallback(model->GetCallbackManager(), "Changed", OnChanged, view);
//     model->GetCallbackManager()->DispatchCallbacks("Changed", notification, model);
//
// The sending side is the object's callback manager. On the receiving side the object registers
// callbacks with the managers of others, and takes them back when it goes; when a manager goes
// first, that is well, too. So no callback is ever made for an object that is gone, and neither
// side keeps the other alive.
//
// A callback may be tied to an interface of the sender: "an event of an interface" is the event
// "<interface>::<event>", for example "ZORIContainer::Changed". Subscriptions are the callbacks on
// those.
//
// A copy is an object of its own: nobody's callbacks, no manager yet.
//
// The order of the virtual operations is part of the binary interface. Lack of memory is
// std::bad_alloc, on adding only, and changes nothing.
// Thread rule: one thread at a time for the object and all managers that it has callbacks with, its
// destruction included.
class ZOR_EXPORT ZOREventSubscriber : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // An object without callbacks and without a manager.
    ZOREventSubscriber();
    ZOREventSubscriber(const ZOREventSubscriber& iOther);
    // Changes nothing: callbacks and manager stay this object's.
    ZOREventSubscriber& operator=(const ZOREventSubscriber& iOther);
    // Takes its callbacks back from all managers that are still there.
    ~ZOREventSubscriber() override;

    // Registers a callback of this object for the event of that name and returns its handle; 0, and
    // nothing registered, when manager, name or function is null. See ZORCallbackManager.h for what
    // the function gets.
    virtual ZORCallback AddCallback(ZORCallbackManager* ioManager, const char* iEvent,
                                    ZORCallbackFunction iFunction, void* iData);
    // Removes one callback of this object. Returns 1, or 0 when the manager has none of that handle
    // (any more) for this object.
    virtual int RemoveCallback(ZORCallbackManager* ioManager, ZORCallback iCallback);
    // Removes the callbacks of this object on one event of the manager. Returns how many there
    // were; 0 when the manager or the name is null.
    virtual int RemoveCallbacksOn(ZORCallbackManager* ioManager, const char* iEvent);
    // Removes all callbacks of this object with the manager, subscriptions included. Returns how
    // many there were; 0 when it is null.
    virtual int RemoveSubscriberCallbacks(ZORCallbackManager* ioManager);

    // The manager of the events that this object sends: made by the first call, never null, valid
    // as long as the object.
    virtual ZORCallbackManager* GetCallbackManager();

    // Registers a callback of this object for an event of an interface, given by its name or by its
    // identifier; otherwise as AddCallback. 0 also for a null name and an unknown identifier.
    virtual ZORCallback AddSubscription(ZORCallbackManager* ioManager, const char* iInterface,
                                        const char* iEvent, ZORCallbackFunction iFunction,
                                        void* iData);
    virtual ZORCallback AddSubscription(ZORCallbackManager* ioManager, const GUID& iInterface,
                                        const char* iEvent, ZORCallbackFunction iFunction,
                                        void* iData);
    // Removes the subscriptions of this object on one event of an interface. Returns how many there
    // were; 0 for a null argument or an unknown identifier.
    virtual int RemoveSubscriptionsOn(ZORCallbackManager* ioManager, const char* iInterface,
                                      const char* iEvent);
    virtual int RemoveSubscriptionsOn(ZORCallbackManager* ioManager, const GUID& iInterface,
                                      const char* iEvent);
    // Removes the subscriptions of this object on all events of an interface. Returns how many
    // there were; 0 for a null argument or an unknown identifier.
    virtual int RemoveInterfaceSubscriptions(ZORCallbackManager* ioManager, const char* iInterface);
    virtual int RemoveInterfaceSubscriptions(ZORCallbackManager* ioManager, const GUID& iInterface);

private:
    struct Events; // nothing is allocated for an object that has to do with none
    ZOR_HIDDEN Events& Own();

    std::unique_ptr<Events> _Events;
};
