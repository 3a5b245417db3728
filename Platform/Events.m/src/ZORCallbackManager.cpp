#include "ZORCallbackManager.h"

#include "ZORHandle.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// Each event has its callbacks side by side in the order they were added. Removing one only marks
// its entry, so that dispatches under way keep their place; once more than half of the entries are
// marked they are swept out, and each dispatch under way is told how far its place has moved. A
// dispatch goes up to the end it found when it began: what is added later lies behind that.
class ZORCallbackManager::Registrations
{
public:
    ZORCallback Add(const char* iEvent, ZORCallbackFunction iFunction, void* iData,
                    ZORBaseUnknown* iSubscriber);
    int Remove(ZORCallback iCallback);
    int RemoveAllOf(const ZORBaseUnknown* iSubscriber, const char* iEvent);
    int RemoveAllOf(const ZORBaseUnknown* iSubscriber);
    void Dispatch(const char* iEvent, ZORNotification* iNotification, ZORBaseUnknown* iSender);
    std::size_t Count(const char* iEvent) const;
    // The manager is gone: dispatches under way call nothing more.
    void Close();
    const bool& IsClosed() const { return _Closed; }

private:
    struct Place;
    struct Entry {
        ZORCallbackFunction function; // null in a removed entry
        void* data;
        ZORBaseUnknown* subscriber;
        Place* place;
    };
    // A dispatch under way: what it calls next and where it stops.
    struct Cursor {
        std::size_t next;
        std::size_t end;
        Cursor* outer;
        bool moved = false; // by others than the dispatch itself, which keeps a copy of its place
    };
    struct Event {
        std::vector<Entry> entries;
        std::size_t removed = 0;
        Cursor* innermost = nullptr;
    };
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Events = std::unordered_map<std::string, Event, Hash, std::equal_to<>>;
    // Those of one subscriber stand together, and in there those of one event.
    using Subscription = std::pair<const ZORBaseUnknown*, const Events::value_type*>;
    using Subscribers = std::multimap<Subscription, ZORCallback>;
    struct Place {
        Events::value_type* event;
        std::size_t index;
        Subscribers::iterator subscriber;
    };
    class Dispatching;

    Events::value_type* Find(const char* iEvent);
    int RemoveRange(Subscribers::iterator iFirst, Subscribers::iterator iLast);
    void Append(Events::value_type& ioEvent, const Entry& iEntry);
    void Tidy(Events::value_type& ioEvent);
    static void Sweep(Event& ioEvent);
    static void Call(const Entry& iEntry, const char* iEvent, ZORNotification* iNotification,
                     ZORBaseUnknown* iSender);
    static void CallHolding(const Entry& iEntry, const char* iEvent, ZORNotification* iNotification,
                            ZORBaseUnknown* iSender);

    Events _Events;
    std::unordered_map<ZORCallback, Place> _Places;
    Subscribers _Subscribers;
    ZORCallback _Last = 0;
    bool _Closed = false;
};

// Enters a cursor into its event for as long as the dispatch goes on.
class ZORCallbackManager::Registrations::Dispatching
{
public:
    Dispatching(Registrations& ioOwner, Events::value_type& ioEvent)
        : _Owner(ioOwner),
          _Event(ioEvent), _Cursor{0, ioEvent.second.entries.size(), ioEvent.second.innermost}
    {
        _Event.second.innermost = &_Cursor;
    }
    ~Dispatching()
    {
        _Event.second.innermost = _Cursor.outer;
        _Owner.Tidy(_Event);
    }
    Dispatching(const Dispatching&) = delete;
    Dispatching& operator=(const Dispatching&) = delete;

    Cursor& Place() { return _Cursor; }

private:
    Registrations& _Owner;
    Events::value_type& _Event;
    Cursor _Cursor;
};

ZORCallbackManager::Registrations::Events::value_type*
ZORCallbackManager::Registrations::Find(const char* iEvent)
{
    const auto found = _Events.find(std::string_view(iEvent));
    return found == _Events.end() ? nullptr : &*found;
}

ZORCallback ZORCallbackManager::Registrations::Add(const char* iEvent,
                                                   ZORCallbackFunction iFunction, void* iData,
                                                   ZORBaseUnknown* iSubscriber)
{
    Events::value_type& event = *_Events.try_emplace(iEvent).first;
    try {
        Append(event, {iFunction, iData, iSubscriber, nullptr});
    } catch (...) {
        Tidy(event);
        throw;
    }
    return _Last;
}

// Each step is undone when a later one finds no memory.
void ZORCallbackManager::Registrations::Append(Events::value_type& ioEvent, const Entry& iEntry)
{
    std::vector<Entry>& entries = ioEvent.second.entries;
    const Place place{&ioEvent, entries.size(), _Subscribers.end()};
    const auto added = _Places.try_emplace(_Last + 1, place).first;
    try {
        entries.push_back(iEntry);
        entries.back().place = &added->second;
        if (iEntry.subscriber)
            added->second.subscriber =
                _Subscribers.emplace(Subscription(iEntry.subscriber, &ioEvent), _Last + 1);
    } catch (...) {
        entries.resize(place.index);
        _Places.erase(added);
        throw;
    }
    ++_Last;
}

int ZORCallbackManager::Registrations::Remove(ZORCallback iCallback)
{
    const auto found = _Places.find(iCallback);
    if (found == _Places.end())
        return 0;
    const Place place = found->second;
    _Places.erase(found);
    if (place.subscriber != _Subscribers.end())
        _Subscribers.erase(place.subscriber);
    place.event->second.entries[place.index].function = nullptr;
    ++place.event->second.removed;
    Tidy(*place.event);
    return 1;
}

int ZORCallbackManager::Registrations::RemoveAllOf(const ZORBaseUnknown* iSubscriber,
                                                   const char* iEvent)
{
    const auto [first, last] = _Subscribers.equal_range({iSubscriber, Find(iEvent)});
    return RemoveRange(first, last);
}

int ZORCallbackManager::Registrations::RemoveAllOf(const ZORBaseUnknown* iSubscriber)
{
    const auto first = _Subscribers.lower_bound({iSubscriber, nullptr});
    const auto last = std::find_if(first, _Subscribers.end(), [&](const auto& each) {
        return each.first.first != iSubscriber;
    });
    return RemoveRange(first, last);
}

int ZORCallbackManager::Registrations::RemoveRange(Subscribers::iterator iFirst,
                                                   Subscribers::iterator iLast)
{
    int removed = 0;
    while (iFirst != iLast)
        removed += Remove((iFirst++)->second);
    return removed;
}

void ZORCallbackManager::Registrations::Tidy(Events::value_type& ioEvent)
{
    Event& event = ioEvent.second;
    if (2 * event.removed > event.entries.size())
        Sweep(event);
    if (event.entries.empty() && !event.innermost)
        _Events.erase(_Events.find(ioEvent.first));
}

void ZORCallbackManager::Registrations::Sweep(Event& ioEvent)
{
    std::vector<Entry>& entries = ioEvent.entries;
    const auto isRemoved = [](const Entry& entry) { return !entry.function; };
    const auto removedBefore = [&](std::size_t index) {
        const auto end = entries.begin() + static_cast<std::ptrdiff_t>(index);
        return static_cast<std::size_t>(std::count_if(entries.begin(), end, isRemoved));
    };
    for (Cursor* cursor = ioEvent.innermost; cursor; cursor = cursor->outer) {
        cursor->next -= removedBefore(cursor->next);
        cursor->end -= removedBefore(cursor->end);
        cursor->moved = true;
    }
    entries.erase(std::remove_if(entries.begin(), entries.end(), isRemoved), entries.end());
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i].place->index = i;
    ioEvent.removed = 0;
}

void ZORCallbackManager::Registrations::Dispatch(const char* iEvent, ZORNotification* iNotification,
                                                 ZORBaseUnknown* iSender)
{
    Events::value_type* const event = Find(iEvent);
    if (!event)
        return;
    const char* const name = event->first.c_str();
    std::exception_ptr first;
    Dispatching dispatching(*this, *event);
    Cursor& place = dispatching.Place();
    std::size_t end = place.end;
    for (std::size_t next = 0; next != end;) {
        const Entry& entry = event->second.entries[next];
        place.next = ++next;
        if (!entry.function) [[unlikely]] // removed
            continue;
        try {
            Call(entry, name, iNotification, iSender);
        } catch (...) {
            const std::exception_ptr raised = std::current_exception();
            if (!raised) // no exception of C++: the thread is ending
                throw;
            if (!first)
                first = raised;
        }
        if (place.moved) [[unlikely]] {
            next = place.next;
            end = place.end;
            place.moved = false;
        }
    }
    if (first)
        std::rethrow_exception(first);
}

inline void ZORCallbackManager::Registrations::Call(const Entry& iEntry, const char* iEvent,
                                                    ZORNotification* iNotification,
                                                    ZORBaseUnknown* iSender)
{
    if (iEntry.subscriber)
        CallHolding(iEntry, iEvent, iNotification, iSender);
    else [[likely]]
        iEntry.function(iSender, iEvent, iNotification, iEntry.data);
}

// The entry may go in the call.
void ZORCallbackManager::Registrations::CallHolding(const Entry& iEntry, const char* iEvent,
                                                    ZORNotification* iNotification,
                                                    ZORBaseUnknown* iSender)
{
    const Entry entry = iEntry;
    const ZORBaseUnknown_var held(entry.subscriber);
    entry.function(iSender, iEvent, iNotification, entry.data);
}

void ZORCallbackManager::Registrations::Close()
{
    _Closed = true;
    for (auto& [name, event] : _Events)
        for (Cursor* cursor = event.innermost; cursor; cursor = cursor->outer) {
            cursor->end = cursor->next;
            cursor->moved = true;
        }
}

std::size_t ZORCallbackManager::Registrations::Count(const char* iEvent) const
{
    const auto found = _Events.find(std::string_view(iEvent));
    return found == _Events.end() ? 0 : found->second.entries.size() - found->second.removed;
}

ZORCallbackManager::ZORCallbackManager() : _Registrations(std::make_shared<Registrations>()) {}

ZORCallbackManager::~ZORCallbackManager()
{
    _Registrations->Close();
}

std::weak_ptr<const bool> ZORCallbackManager::Closed() const
{
    return std::shared_ptr<const bool>(_Registrations, &_Registrations->IsClosed());
}

ZORCallback ZORCallbackManager::AddCallback(const char* iEvent, ZORCallbackFunction iFunction,
                                            void* iData, ZORBaseUnknown* iSubscriber)
{
    return iEvent && iFunction ? _Registrations->Add(iEvent, iFunction, iData, iSubscriber) : 0;
}

int ZORCallbackManager::RemoveCallback(ZORCallback iCallback)
{
    return _Registrations->Remove(iCallback);
}

int ZORCallbackManager::RemoveCallbacksOn(const char* iEvent, const ZORBaseUnknown* iSubscriber)
{
    return iEvent && iSubscriber ? _Registrations->RemoveAllOf(iSubscriber, iEvent) : 0;
}

int ZORCallbackManager::RemoveSubscriberCallbacks(const ZORBaseUnknown* iSubscriber)
{
    return iSubscriber ? _Registrations->RemoveAllOf(iSubscriber) : 0;
}

void ZORCallbackManager::DispatchCallbacks(const char* iEvent, ZORNotification* iNotification,
                                           ZORBaseUnknown* iSender)
{
    if (!iEvent)
        return;
    const std::shared_ptr<Registrations> registrations = _Registrations;
    const ZORBaseUnknown_var held(iSender);
    registrations->Dispatch(iEvent, iNotification, iSender);
}

int ZORCallbackManager::GetNbCallbacks(const char* iEvent) const
{
    return iEvent ? static_cast<int>(_Registrations->Count(iEvent)) : 0;
}
