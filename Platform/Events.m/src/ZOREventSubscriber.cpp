#include "ZOREventSubscriber.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

ZOR_IMPLEMENT_CLASS(ZOREventSubscriber, ZORKindImplementation, ZORBaseUnknown)

// The callbacks that the object has with managers, so that it can take them back. A manager that is
// gone leaves its records behind, which do no harm: they are known by their flag, swept out as
// their number grows, and replaced when another manager is made in the same place.
struct ZOREventSubscriber::Events {
    // Those of one manager stand together, and in there those of one event, or of one beginning.
    struct Record {
        ZORCallbackManager* manager;
        std::string event;
        ZORCallback callback;
        std::weak_ptr<const bool> closed;

        bool IsGone() const
        {
            const std::shared_ptr<const bool> flag = closed.lock();
            return !flag || *flag;
        }
    };
    using Place = std::tuple<ZORCallbackManager*, std::string_view, ZORCallback>;
    struct Order {
        using is_transparent = void;

        static Place Of(const Record& iRecord)
        {
            return {iRecord.manager, iRecord.event, iRecord.callback};
        }
        static Place Of(const Place& iPlace) { return iPlace; }

        template <class Left, class Right>
        bool operator()(const Left& iLeft, const Right& iRight) const
        {
            return Of(iLeft) < Of(iRight);
        }
    };
    using Records = std::set<Record, Order>;
    using Handle = std::pair<ZORCallbackManager*, ZORCallback>;

    void Add(Record iRecord)
    {
        if (records.size() >= sweepAt)
            Sweep();
        const Handle handle(iRecord.manager, iRecord.callback);
        if (const auto before = byHandle.find(handle); before != byHandle.end())
            Erase(before->second);
        const auto added = records.insert(std::move(iRecord)).first;
        try {
            byHandle.emplace(handle, added);
        } catch (...) {
            records.erase(added);
            throw;
        }
    }

    Records::iterator Erase(Records::iterator iRecord)
    {
        byHandle.erase({iRecord->manager, iRecord->callback});
        return records.erase(iRecord);
    }

    // Takes out the records of a manager from that event on, as long as the event matches. Calls
    // `iTake` for the callbacks that the manager may still have.
    template <class Matches, class Take>
    void TakeOut(ZORCallbackManager* iManager, std::string_view iFirst, Matches iMatches,
                 Take iTake)
    {
        auto each = records.lower_bound(Place(iManager, iFirst, 0));
        while (each != records.end() && each->manager == iManager && iMatches(each->event)) {
            if (!each->IsGone())
                iTake(each->callback);
            each = Erase(each);
        }
    }

    void Sweep()
    {
        for (auto each = records.begin(); each != records.end();)
            each = each->IsGone() ? Erase(each) : std::next(each);
        sweepAt = std::max(kFirstSweep, 2 * records.size());
    }

    static constexpr std::size_t kFirstSweep = 16;
    Records records;
    std::map<Handle, Records::iterator> byHandle;
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
    for (const Events::Record& each : _Events->records)
        if (!each.IsGone())
            each.manager->RemoveCallback(each.callback);
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
    Events::Record record{ioManager, iEvent, 0, ioManager->Closed()};
    const ZORCallback callback = ioManager->AddCallback(iEvent, iFunction, iData, this);
    try {
        record.callback = callback;
        events.Add(std::move(record));
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
    const auto found = _Events->byHandle.find({ioManager, iCallback});
    if (found == _Events->byHandle.end())
        return 0;
    const bool isGone = found->second->IsGone();
    _Events->Erase(found->second);
    return isGone ? 0 : ioManager->RemoveCallback(iCallback);
}

int ZOREventSubscriber::RemoveCallbacksOn(ZORCallbackManager* ioManager, const char* iEvent)
{
    if (!ioManager || !iEvent)
        return 0;
    if (_Events)
        _Events->TakeOut(
            ioManager, iEvent, [&](std::string_view event) { return event == iEvent; },
            [](ZORCallback) {});
    return ioManager->RemoveCallbacksOn(iEvent, this);
}

int ZOREventSubscriber::RemoveSubscriberCallbacks(ZORCallbackManager* ioManager)
{
    if (!ioManager)
        return 0;
    if (_Events)
        _Events->TakeOut(
            ioManager, "", [](std::string_view) { return true; }, [](ZORCallback) {});
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
    _Events->TakeOut(
        ioManager, prefix, [&](std::string_view event) { return event.starts_with(prefix); },
        [&](ZORCallback callback) { removed += ioManager->RemoveCallback(callback); });
    return removed;
}

int ZOREventSubscriber::RemoveInterfaceSubscriptions(ZORCallbackManager* ioManager,
                                                     const GUID& iInterface)
{
    return RemoveInterfaceSubscriptions(ioManager, NameOf(iInterface));
}
