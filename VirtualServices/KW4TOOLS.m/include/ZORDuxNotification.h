#pragma once

#include "ZORNotification.h"

// The notification of most events: the object that the event is about and a piece of data, both
// handed back as they were given (see ZORDuxEventManager.h). The class has no metaobject of its
// own: IsA answers "ZORNotification".
//
//     void OnPartOpened(ZORBaseUnknown*, const char*, ZORNotification* iNotification, void*)
//     {
//         auto* const part = static_cast<Part*>(
//             static_cast<ZORDuxNotification*>(iNotification)->Object());
//         …
//     }
//
// Thread rule: any thread may read.
class ZOR_EXPORT ZORDuxNotification : public ZORNotification
{
public:
    // Both may be null. Neither is owned: they are the sender's, during the dispatch and after.
    ZORDuxNotification(void* iObject, void* iData);
    ~ZORDuxNotification() override;

    // The object that the event is about, as given.
    void* Object() const;
    // The piece of data, as given.
    void* Data() const;

private:
    void* _Object;
    void* _Data;
};
