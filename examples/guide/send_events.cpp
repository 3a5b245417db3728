// One module tells the process that a part was opened, another one listens.

#include "ZORCallbackManager.h"
#include "ZORDuxEventManager.h"
#include "ZORDuxNotification.h"

#include <iostream>

namespace
{

struct Part {
    const char* name;
};

void OnPartOpened(ZORBaseUnknown*, const char* iEvent, ZORNotification* iNotification, void* iData)
{
    auto* const notification = static_cast<ZORDuxNotification*>(iNotification);
    const auto* const part = static_cast<const Part*>(notification->Object());
    std::cout << static_cast<const char*>(iData) << " hears " << iEvent << ": " << part->name
              << '\n';
}

} // namespace

int main()
{
    ZORCallbackManager* const callbacks =
        ZORDuxEventManager::GetEventManager()->GetCallbackManager();
    char view[] = "the view";
    char log[] = "the log";
    const ZORCallback viewer = callbacks->AddCallback("PartOpened", OnPartOpened, view);
    callbacks->AddCallback("PartOpened", OnPartOpened, log);

    Part plate{"plate"};
    auto* const notification = new ZORDuxNotification(&plate, nullptr);
    ZORDuxEventManager::DispatchEvent("PartOpened", notification);
    std::cout << "the view closes\n";
    callbacks->RemoveCallback(viewer);
    ZORDuxEventManager::DispatchEvent("PartOpened", notification);
    ZORDuxEventManager::DispatchEvent("PartClosed", notification); // nobody listens
    notification->Release();
}
