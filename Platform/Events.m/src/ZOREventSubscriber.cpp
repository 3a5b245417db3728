#include "ZOREventSubscriber.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

ZOR_IMPLEMENT_CLASS(ZOREventSubscriber, ZORKindImplementation, ZORBaseUnknown)

// The callbacks that the object has with managers, so that it can take them back. A manager that is
// gone leaves its records behind, which do no harm: they are known by their flag, swept out as
// their number grows, and overwritten when another manager is made in the same place.
struct ZOREventSubscriber::Events {
    struct Record {
        std::weak_ptr<const bool> closed;
        std::string event;

        bool IsGone() const
        {
            const std::shared_ptr<const bool> flag = closed.lock();
            return !flag || *flag;
        }
    };
    using Key = std::pair<ZORCallbackManager*, ZORCallback>;
    using Records = std::map<Key, Record>;

    void Add(ZORCallbackManager* iManager, ZORCallback iCallback, Record iRecord)
    {
        if (records.size() >= sweepAt) {
            std::erase_if(records, [](const auto& each) { return each.second.IsGone(); });
            sweepAt = std::max(kFirstSweep, 2 * records.size());
        }
        records.insert_or_assign({iManager, iCallback}, std::move(iRecord));
    }

    // Takes out the records of a manager whose event matches, and returns those of callbacks that
    // it may still have.
    template <class Matches>
    std::vector<ZORCallback> TakeOut(ZORCallbackManager* iManager, Matches iMatches)
    {
        std::vector<ZORCallback> taken;
        auto each = records.lower_bound({iManager, 0});
        while (each != records.end() && each->first.first == iManager) {
            const bool matches = iMatches(each->second.event);
            if (matches && !each->second.IsGone())
                taken.push_back(each->first.second);
            each = matches ? records.erase(each) : std::next(each);
        }
        return taken;
    }

    static constexpr std::size_t kFirstSweep = 16;
    Records records;
    std::size_t sweepAt = kFirstSweep;
    std::unique_ptr<ZORCallbackManager> manager;
};

namespace
{

constexpr char kOfInterface[] = "::"; // stands between an interface and its event

const char* NameOf(const GUID& iInterface)
{
    const ZORMetaClass* const meta = QueryMetaObject(iInterface);
    return meta ? meta->GetClassName() : nullptr;
}

std::string EventOf(const char* iInterface, const char* iEvent)
{
    return std::string(iInterface) + kOfInterface + iEvent;
}

} // namespace

ZOREventSubscriber::ZOREventSubscriber() = default;

ZOREventSubscriber::ZOREventSubscriber(const ZOREventSubscriber& iOther) : ZORBaseUnknown(iOther) {}

ZOREventSubscriber& ZOREventSubscriber::operator=(const ZOREventSubscriber&)
{
    return *this;
}

ZOREventSubscriber::~ZOREventSubscriber()
{
    if (!_Events)
        return;
    for (const auto& [key, record] : _Events->records)
        if (!record.IsGone())
            key.first->RemoveCallback(key.second);
}

ZOREventSubscriber::Events& ZOREventSubscriber::Own()
{
    if (!_Events)
        _Events = std::make_unique<Events>();
    return *_Events;
}

ZORCallback ZOREventSubscriber::AddCallback(ZORCallbackManager* ioManager, const char* iEvent,
                                            ZORCallbackFunction iFunction, void* iData)
{
    if (!ioManager || !iEvent || !iFunction)
        return 0;
    Events& events = Own();
    Events::Record record{ioManager->Closed(), iEvent};
    const ZORCallback callback = ioManager->AddCallback(iEvent, iFunction, iData, this);
    try {
        events.Add(ioManager, callback, std::move(record));
    } catch (...) {
        ioManager->RemoveCallback(callback);
        throw;
    }
    return callback;
}

int ZOREventSubscriber::RemoveCallback(ZORCallbackManager* ioManager, ZORCallback iCallback)
{
    if (!_Events)
        return 0;
    const auto found = _Events->records.find({ioManager, iCallback});
    if (found == _Events->records.end())
        return 0;
    const bool isGone = found->second.IsGone();
    _Events->records.erase(found);
    return isGone ? 0 : ioManager->RemoveCallback(iCallback);
}

int ZOREventSubscriber::RemoveCallbacksOn(ZORCallbackManager* ioManager, const char* iEvent)
{
    if (!ioManager || !iEvent)
        return 0;
    if (_Events)
        _Events->TakeOut(ioManager, [&](const std::string& event) { return event == iEvent; });
    return ioManager->RemoveCallbacksOn(iEvent, this);
}

int ZOREventSubscriber::RemoveSubscriberCallbacks(ZORCallbackManager* ioManager)
{
    if (!ioManager)
        return 0;
    if (_Events)
        _Events->TakeOut(ioManager, [](const std::string&) { return true; });
    return ioManager->RemoveSubscriberCallbacks(this);
}

ZORCallbackManager* ZOREventSubscriber::GetCallbackManager()
{
    Events& events = Own();
    if (!events.manager)
        events.manager = std::make_unique<ZORCallbackManager>();
    return events.manager.get();
}

ZORCallback ZOREventSubscriber::AddSubscription(ZORCallbackManager* ioManager,
                                                const char* iInterface, const char* iEvent,
                                                ZORCallbackFunction iFunction, void* iData)
{
    if (!iInterface || !iEvent)
        return 0;
    return AddCallback(ioManager, EventOf(iInterface, iEvent).c_str(), iFunction, iData);
}

ZORCallback ZOREventSubscriber::AddSubscription(ZORCallbackManager* ioManager,
                                                const GUID& iInterface, const char* iEvent,
                                                ZORCallbackFunction iFunction, void* iData)
{
    return AddSubscription(ioManager, NameOf(iInterface), iEvent, iFunction, iData);
}

int ZOREventSubscriber::RemoveSubscriptionsOn(ZORCallbackManager* ioManager, const char* iInterface,
                                              const char* iEvent)
{
    if (!iInterface || !iEvent)
        return 0;
    return RemoveCallbacksOn(ioManager, EventOf(iInterface, iEvent).c_str());
}

int ZOREventSubscriber::RemoveSubscriptionsOn(ZORCallbackManager* ioManager, const GUID& iInterface,
                                              const char* iEvent)
{
    return RemoveSubscriptionsOn(ioManager, NameOf(iInterface), iEvent);
}

int ZOREventSubscriber::RemoveInterfaceSubscriptions(ZORCallbackManager* ioManager,
                                                     const char* iInterface)
{
    if (!ioManager || !iInterface || !_Events)
        return 0;
    const std::string prefix = std::string(iInterface) + kOfInterface;
    int removed = 0;
    for (const ZORCallback each : _Events->TakeOut(
             ioManager, [&](const std::string& event) { return event.starts_with(prefix); }))
        removed += ioManager->RemoveCallback(each);
    return removed;
}

int ZOREventSubscriber::RemoveInterfaceSubscriptions(ZORCallbackManager* ioManager,
                                                     const GUID& iInterface)
{
    return RemoveInterfaceSubscriptions(ioManager, NameOf(iInterface));
}
