#pragma once

#include "ZORClass.h"

// What an event brings along: an object that the sender makes and owns, and that each callback gets
// as it is. Classes that carry data derive from it.
//
//     ZORNotification* notification = new ZORNotification(0);
//     manager->DispatchCallbacks("PartOpened", notification, sender);
//     notification->Release();
//
// The order of the virtual operations is part of the binary interface.
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORNotification : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // `iNone` is 0: there is only one kind of notification.
    explicit ZORNotification(int iNone = 0);
    ~ZORNotification() override;
};
