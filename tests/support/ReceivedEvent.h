#pragma once

#include "ZORCallbackManager.h"

#include <string>

// What a callback got with the last event, and how often it was called.
struct ReceivedEvent {
    ZORBaseUnknown* sender = nullptr;
    std::string event;
    ZORNotification* notification = nullptr;
    int calls = 0;
};

// A callback that notes what it gets; its data is a ReceivedEvent.
inline void Receive(ZORBaseUnknown* iSender, const char* iEvent, ZORNotification* iNotification,
                    void* iData)
{
    auto& received = *static_cast<ReceivedEvent*>(iData);
    received = {iSender, iEvent, iNotification, received.calls + 1};
}
