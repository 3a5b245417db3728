#include "ZORCallbackManager.h"

#include "CountedAllocations.h"
#include "ReceivedEvent.h"
#include "ZORHandle.h"
#include "ZORInternalError.h"
#include "ZORNotification.h"
#include "ZORRaisedError.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <pthread.h>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

// A callback that is any function; its data is the function itself.
using Action = std::function<void()>;

void Act(ZORBaseUnknown*, const char*, ZORNotification*, void* iData)
{
    (*static_cast<Action*>(iData))();
}

// A manager, and the names of the callbacks that were called.
class ZORCallbackManagerTest : public testing::Test
{
protected:
    // Registers a callback that notes its name and then acts.
    ZORCallback Add(const std::string& iName, const Action& iThen = {},
                    const char* iEvent = "event", ZORBaseUnknown* iSubscriber = nullptr)
    {
        _Actions.push_back(std::make_unique<Action>([this, iName, iThen] {
            called.push_back(iName);
            if (iThen)
                iThen();
        }));
        return manager->AddCallback(iEvent, Act, _Actions.back().get(), iSubscriber);
    }
    void Dispatch(const char* iEvent = "event")
    {
        manager->DispatchCallbacks(iEvent, nullptr, nullptr);
    }

    std::unique_ptr<ZORCallbackManager> manager = std::make_unique<ZORCallbackManager>();
    std::vector<std::string> called;

private:
    std::vector<std::unique_ptr<Action>> _Actions;
};

// A subscriber that removes its callbacks when it goes.
class Subscriber : public ZORBaseUnknown
{
public:
    explicit Subscriber(ZORCallbackManager* iManager) : _Manager(iManager) { ++alive; }
    ~Subscriber() override
    {
        --alive;
        _Manager->RemoveSubscriberCallbacks(this);
    }

    static int alive;

private:
    ZORCallbackManager* _Manager;
};

int Subscriber::alive = 0;

} // namespace

TEST_F(ZORCallbackManagerTest, CallsWhatIsRegisteredUntilItIsRemoved)
{
    ReceivedEvent received;
    const ZORCallback callback = manager->AddCallback("PartOpened", Receive, &received);
    manager->DispatchCallbacks("PartOpened", nullptr, nullptr);
    EXPECT_EQ(received.calls, 1);
    EXPECT_EQ(manager->RemoveCallback(callback), 1);
    manager->DispatchCallbacks("PartOpened", nullptr, nullptr);
    EXPECT_EQ(received.calls, 1);
}

TEST_F(ZORCallbackManagerTest, HandsSenderEventNotificationAndDataToTheCallback)
{
    ReceivedEvent received;
    manager->AddCallback("PartOpened", Receive, &received);
    const ZORBaseUnknown_var sender = new ZORBaseUnknown;
    ZORNotification notification;
    manager->DispatchCallbacks("PartOpened", &notification, sender.Get());
    EXPECT_EQ(received.sender, sender.Get());
    EXPECT_EQ(received.event, "PartOpened");
    EXPECT_EQ(received.notification, &notification);
    sender->Release();
}

TEST_F(ZORCallbackManagerTest, HandsNullSenderAndNotificationOn)
{
    ZORBaseUnknown something;
    ZORNotification notification;
    ReceivedEvent received{&something, "", &notification, 0};
    manager->AddCallback("event", Receive, &received);
    Dispatch();
    EXPECT_EQ(received.sender, nullptr);
    EXPECT_EQ(received.notification, nullptr);
}

TEST_F(ZORCallbackManagerTest, LeavesTheCountsOfSenderNotificationAndSubscriberAsTheyWere)
{
    ReceivedEvent received;
    ZORBaseUnknown sender;
    ZORBaseUnknown subscriber;
    ZORNotification notification;
    manager->AddCallback("event", Receive, &received, &subscriber);
    manager->DispatchCallbacks("event", &notification, &sender);
    for (ZORBaseUnknown* object :
         {&sender, &subscriber, static_cast<ZORBaseUnknown*>(&notification)}) {
        EXPECT_EQ(object->AddRef(), 2U);
        object->Release();
    }
}

TEST_F(ZORCallbackManagerTest, CallsInTheOrderOfRegistration)
{
    for (const char* name : {"a", "b", "c"})
        Add(name);
    Dispatch();
    EXPECT_THAT(called, ElementsAre("a", "b", "c"));
}

TEST_F(ZORCallbackManagerTest, CallsOnlyTheCallbacksOfTheEvent)
{
    Add("short", {}, "Part");
    Add("long", {}, "PartOpened");
    Add("none", {}, "");
    Dispatch("Part");
    EXPECT_THAT(called, ElementsAre("short"));
    Dispatch("");
    EXPECT_THAT(called, ElementsAre("short", "none"));
}

TEST_F(ZORCallbackManagerTest, DispatchOfNullOrOfAnUnknownNameDoesNothing)
{
    Add("a");
    Dispatch(nullptr);
    Dispatch("nobody's");
    EXPECT_THAT(called, IsEmpty());
}

TEST_F(ZORCallbackManagerTest, NullNameOrFunctionRegistersNothing)
{
    EXPECT_EQ(manager->AddCallback(nullptr, Receive, nullptr), 0U);
    EXPECT_EQ(manager->AddCallback("event", nullptr, nullptr), 0U);
    EXPECT_EQ(manager->GetNbCallbacks("event"), 0);
}

TEST_F(ZORCallbackManagerTest, CountsTheCallbacksOfAnEvent)
{
    EXPECT_EQ(manager->GetNbCallbacks(nullptr), 0);
    EXPECT_EQ(manager->GetNbCallbacks("event"), 0);
    const ZORCallback first = Add("a");
    Add("b");
    Add("c", {}, "other");
    EXPECT_EQ(manager->GetNbCallbacks("event"), 2);
    manager->RemoveCallback(first);
    EXPECT_EQ(manager->GetNbCallbacks("event"), 1);
}

TEST_F(ZORCallbackManagerTest, RegisteringTwiceGivesTwoCallbacks)
{
    ReceivedEvent received;
    const ZORCallback first = manager->AddCallback("event", Receive, &received);
    const ZORCallback second = manager->AddCallback("event", Receive, &received);
    EXPECT_NE(first, second);
    Dispatch();
    EXPECT_EQ(received.calls, 2);
    manager->RemoveCallback(first);
    Dispatch();
    EXPECT_EQ(received.calls, 3);
}

TEST_F(ZORCallbackManagerTest, AHandleIsRemovedOnceAndNeverUsedAgain)
{
    const ZORCallback gone = Add("a");
    EXPECT_EQ(manager->RemoveCallback(gone), 1);
    for (int i = 0; i < 100; ++i)
        EXPECT_NE(Add("b"), gone);
    EXPECT_EQ(manager->RemoveCallback(gone), 0);
    EXPECT_EQ(manager->RemoveCallback(0), 0);
    EXPECT_EQ(manager->GetNbCallbacks("event"), 100);
}

TEST_F(ZORCallbackManagerTest, RemovesTheCallbacksOfASubscriberOnOneEventOrAll)
{
    ZORBaseUnknown mine;
    ZORBaseUnknown other;
    Add("mine 1", {}, "event", &mine);
    Add("mine 2", {}, "event", &mine);
    Add("mine, elsewhere", {}, "elsewhere", &mine);
    Add("mine, at last", {}, "at last", &mine);
    Add("other", {}, "event", &other);
    Add("nobody's");
    EXPECT_EQ(manager->RemoveCallbacksOn("event", &mine), 2);
    EXPECT_EQ(manager->RemoveCallbacksOn("event", &mine), 0);
    Dispatch();
    EXPECT_THAT(called, ElementsAre("other", "nobody's"));
    EXPECT_EQ(manager->RemoveSubscriberCallbacks(&mine), 2);
    EXPECT_EQ(manager->RemoveSubscriberCallbacks(&mine), 0);
    EXPECT_EQ(manager->GetNbCallbacks("elsewhere"), 0);
    EXPECT_EQ(manager->GetNbCallbacks("event"), 2);
}

TEST_F(ZORCallbackManagerTest, NullEventOrSubscriberRemovesNothing)
{
    ZORBaseUnknown subscriber;
    Add("nobody's");
    Add("somebody's", {}, "event", &subscriber);
    EXPECT_EQ(manager->RemoveSubscriberCallbacks(nullptr), 0);
    EXPECT_EQ(manager->RemoveCallbacksOn("event", nullptr), 0);
    EXPECT_EQ(manager->RemoveCallbacksOn(nullptr, &subscriber), 0);
    EXPECT_EQ(manager->GetNbCallbacks("event"), 2);
}

TEST_F(ZORCallbackManagerTest, CallbackRemovedBeforeItsTurnIsNotCalled)
{
    ZORCallback second = 0;
    Add("first", [&] { manager->RemoveCallback(second); });
    second = Add("second");
    Add("third");
    Dispatch();
    EXPECT_THAT(called, ElementsAre("first", "third"));
}

TEST_F(ZORCallbackManagerTest, CallbackMayRemoveItself)
{
    ZORCallback self = 0;
    self = Add("once", [&] { EXPECT_EQ(manager->RemoveCallback(self), 1); });
    Add("always");
    Dispatch();
    Dispatch();
    EXPECT_THAT(called, ElementsAre("once", "always", "always"));
}

TEST_F(ZORCallbackManagerTest, CallbackMayRemoveAllOthersAndItself)
{
    std::vector<ZORCallback> callbacks;
    const Action removeAll = [&] {
        for (const ZORCallback callback : callbacks)
            manager->RemoveCallback(callback);
    };
    for (const char* name : {"a", "b", "c", "d"})
        callbacks.push_back(Add(name, std::string(name) == "b" ? removeAll : Action()));
    Dispatch();
    Dispatch();
    EXPECT_THAT(called, ElementsAre("a", "b"));
}

TEST_F(ZORCallbackManagerTest, CallbackAddedIsFirstCalledByTheNextDispatch)
{
    bool added = false;
    Add("first", [&] {
        if (!std::exchange(added, true))
            Add("late");
    });
    Dispatch();
    EXPECT_THAT(called, ElementsAre("first"));
    called.clear();
    Dispatch();
    EXPECT_THAT(called, ElementsAre("first", "late"));
}

TEST_F(ZORCallbackManagerTest, CallbackAddedInADispatchIsCalledByADispatchFromInside)
{
    int depth = 0;
    Add("first", [&] {
        if (depth++ > 0)
            return;
        Add("late");
        Dispatch();
    });
    Add("second");
    Dispatch();
    EXPECT_THAT(called, ElementsAre("first", "first", "second", "late", "second"));
}

TEST_F(ZORCallbackManagerTest, CallbackMayDispatchAnotherEvent)
{
    Add("outer", [&] { Dispatch("inner"); });
    Add("inner", {}, "inner");
    Add("after");
    Dispatch();
    EXPECT_THAT(called, ElementsAre("outer", "inner", "after"));
}

TEST_F(ZORCallbackManagerTest, RemovalInAnInnerDispatchHoldsForTheOuterOne)
{
    int depth = 0;
    std::vector<ZORCallback> others;
    Add("first", [&] {
        if (depth++ == 0)
            Dispatch();
        else
            for (const ZORCallback other : others)
                manager->RemoveCallback(other);
    });
    for (const char* name : {"a", "b", "c"})
        others.push_back(Add(name));
    Add("last");
    Dispatch();
    EXPECT_THAT(called, ElementsAre("first", "first", "last", "last"));
}

TEST_F(ZORCallbackManagerTest, SubscriberMayDieBeforeItsTurn)
{
    auto* const subscriber = new Subscriber(manager.get());
    Add("first", [&] { subscriber->Release(); });
    Add("dead", {}, "event", subscriber);
    Add("last");
    Dispatch();
    EXPECT_EQ(Subscriber::alive, 0);
    EXPECT_THAT(called, ElementsAre("first", "last"));
}

TEST_F(ZORCallbackManagerTest, SubscriberThatDropsItsLastReferenceDiesWhenItsCallbackReturns)
{
    auto* const subscriber = new Subscriber(manager.get());
    const Action die = [&] {
        subscriber->Release();
        EXPECT_EQ(Subscriber::alive, 1);
    };
    Add("dying", die, "event", subscriber);
    Add("last", [] { EXPECT_EQ(Subscriber::alive, 0); });
    Dispatch();
    Dispatch();
    EXPECT_THAT(called, ElementsAre("dying", "last", "last"));
}

TEST_F(ZORCallbackManagerTest, SenderLivesUntilTheDispatchEnds)
{
    ReceivedEvent received;
    auto* const sender = new Subscriber(manager.get());
    Add("first", [&] { sender->Release(); });
    Add("second", [] { EXPECT_EQ(Subscriber::alive, 1); });
    manager->DispatchCallbacks("event", nullptr, sender);
    EXPECT_EQ(Subscriber::alive, 0);
    EXPECT_THAT(called, ElementsAre("first", "second"));
}

TEST_F(ZORCallbackManagerTest, NothingMoreIsCalledAfterTheManagerIsGone)
{
    Add("first", [&] { manager.reset(); });
    Add("second");
    Dispatch();
    EXPECT_THAT(called, ElementsAre("first"));
}

TEST_F(ZORCallbackManagerTest, ManagerMayGoInADispatchInsideADispatch)
{
    int depth = 0;
    Add("first", [&] {
        if (depth++ == 0)
            Dispatch();
        else
            manager.reset();
    });
    Add("second");
    Dispatch();
    EXPECT_THAT(called, ElementsAre("first", "first"));
}

TEST_F(ZORCallbackManagerTest, TheFirstErrorGoesOnAfterAllOthersHadTheirCall)
{
    auto* const error = new ZORInternalError(1);
    Add("first");
    Add("raises", [&] { error->Throw("unit", 7); });
    Add("raises later", [] { (new ZORInternalError(2))->Throw("unit", 8); });
    Add("last");
    try {
        Dispatch();
        FAIL() << "nothing was raised";
    } catch (const ZORRaisedError& raised) {
        EXPECT_EQ(&raised.Error(), error);
        EXPECT_EQ(raised.Error().GetLine(), 7);
    }
    EXPECT_THAT(called, ElementsAre("first", "raises", "raises later", "last"));
}

TEST_F(ZORCallbackManagerTest, ForeignExceptionsGoOnUnchanged)
{
    Add("raises", [] { throw std::out_of_range("seven"); });
    Add("last");
    try {
        Dispatch();
        FAIL() << "nothing was raised";
    } catch (const std::out_of_range& raised) {
        EXPECT_STREQ(raised.what(), "seven");
    }
    EXPECT_THAT(called, ElementsAre("raises", "last"));
}

TEST_F(ZORCallbackManagerTest, ErrorOfADispatchFromInsideIsThatCallbacksError)
{
    Add("outer", [&] {
        Dispatch("inner");
        called.push_back("not reached");
    });
    Add("after");
    Add(
        "raises", [] { throw 42; }, "inner");
    Add("inner", {}, "inner");
    EXPECT_THROW(Dispatch(), int);
    EXPECT_THAT(called, ElementsAre("outer", "raises", "inner", "after"));
}

TEST_F(ZORCallbackManagerTest, WorksOnAfterAnError)
{
    bool raises = true;
    Add("a", [&] {
        if (raises)
            throw 1;
    });
    Add("b");
    EXPECT_THROW(Dispatch(), int);
    raises = false;
    Dispatch();
    EXPECT_THAT(called, ElementsAre("a", "b", "a", "b"));
}

TEST_F(ZORCallbackManagerTest, TheNameThatCallbacksGetOutlivesTheSendersText)
{
    auto name = std::make_unique<std::string>("a name that is too long to lie inside a string");
    ReceivedEvent received;
    Add(
        "frees", [&] { name.reset(); }, name->c_str());
    manager->AddCallback(name->c_str(), Receive, &received);
    const std::string expected = *name;
    Dispatch(name->c_str());
    EXPECT_EQ(received.event, expected);
}

TEST_F(ZORCallbackManagerTest, HoldsThousandsAndForgetsThem)
{
    constexpr int kMany = 20000;
    ReceivedEvent received;
    std::vector<ZORCallback> callbacks;
    for (int i = 0; i < kMany; ++i)
        callbacks.push_back(manager->AddCallback("event", Receive, &received));
    std::shuffle(callbacks.begin(), callbacks.end(), std::mt19937(20240229));
    for (int i = 0; i < kMany - 1; ++i)
        ASSERT_EQ(manager->RemoveCallback(callbacks[static_cast<std::size_t>(i)]), 1);
    Dispatch();
    EXPECT_EQ(received.calls, 1);
}

TEST_F(ZORCallbackManagerTest, ASubscriberTakesThousandsOfEventsBackOneByOne)
{
    constexpr int kEvents = 20'000;
    ZORBaseUnknown subscriber;
    std::vector<std::string> events;
    for (int i = 0; i < kEvents; ++i)
        events.push_back("event " + std::to_string(i));
    const auto add = [&](const std::string& event) {
        manager->AddCallback(event.c_str(), Act, nullptr, &subscriber);
    };
    std::for_each(events.begin(), events.end(), add);
    std::for_each(events.begin(), events.end(), add);
    for (auto each = events.rbegin(); each != events.rend(); ++each)
        ASSERT_EQ(manager->RemoveCallbacksOn(each->c_str(), &subscriber), 2);
    EXPECT_EQ(manager->RemoveSubscriberCallbacks(&subscriber), 0);
}

TEST_F(ZORCallbackManagerTest, ThousandsOfSubscribersDieInOneDispatch)
{
    constexpr int kMany = 5000;
    std::vector<Subscriber*> subscribers;
    Add("kills", [&] {
        for (Subscriber* subscriber : subscribers)
            subscriber->Release();
    });
    for (int i = 0; i < kMany; ++i) {
        subscribers.push_back(new Subscriber(manager.get()));
        Add("dead", {}, "event", subscribers.back());
    }
    Dispatch();
    EXPECT_EQ(Subscriber::alive, 0);
    EXPECT_EQ(manager->GetNbCallbacks("event"), 1);
    EXPECT_THAT(called, ElementsAre("kills"));
}

TEST_F(ZORCallbackManagerTest, WhatIsAddedAndRemovedInALongDispatchLeavesNothingBehind)
{
    ReceivedEvent received;
    const auto addAndRemove = [&](int times) {
        for (int i = 0; i < times; ++i)
            manager->RemoveCallback(manager->AddCallback("event", Receive, &received));
    };
    Add("loop", [&] {
        addAndRemove(100);
        const CountedAllocations counted;
        addAndRemove(5000);
        EXPECT_LE(counted.Count(), 5000) << "the list grows";
    });
    Add("last");
    Dispatch();
    EXPECT_THAT(called, ElementsAre("loop", "last"));
}

TEST_F(ZORCallbackManagerTest, EventsThatNobodyWantsAnyMoreLeaveNothingBehind)
{
    const auto addAndRemove = [&](int names) {
        for (int i = 0; i < names; ++i)
            manager->RemoveCallback(
                manager->AddCallback(std::to_string(i).c_str(), Receive, nullptr));
    };
    addAndRemove(10);
    const CountedAllocations counted;
    addAndRemove(10000);
    EXPECT_EQ(counted.Live(), 0);
}

TEST_F(ZORCallbackManagerTest, AThreadMayEndInACallback)
{
    Add("ends", [] { pthread_exit(nullptr); });
    Add("not called");
    std::thread([&] { Dispatch(); }).join();
    EXPECT_THAT(called, ElementsAre("ends"));
}

TEST_F(ZORCallbackManagerTest, LackOfMemoryOnAddingChangesNothing)
{
    ReceivedEvent received;
    ZORBaseUnknown subscriber;
    ZORCallback callback = 0;
    for (long granted = 0; callback == 0; ++granted) {
        ASSERT_LT(granted, 20);
        manager = std::make_unique<ZORCallbackManager>(); // none that keeps room from before
        const ScopedMemoryShortage shortage(granted);
        try {
            callback = manager->AddCallback("event", Receive, &received, &subscriber);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(manager->GetNbCallbacks("event"), 0) << granted;
            EXPECT_EQ(manager->RemoveSubscriberCallbacks(&subscriber), 0) << granted;
        }
    }
    Dispatch();
    EXPECT_EQ(received.calls, 1);
    EXPECT_EQ(manager->RemoveCallback(callback), 1);
}

namespace
{

// What generated callbacks act on: the manager, or the model of it.
class World
{
public:
    virtual ~World() = default;
    virtual void Add(int iName, int iEvent) = 0;
    virtual void Remove(int iName) = 0;
    virtual void Dispatch(int iEvent) = 0;
};

struct Failure {
    int name;
};

// Lets each call do what a generator says; as long as two worlds call the same, both do the same.
class Script
{
public:
    Script(unsigned iSeed, World& ioWorld) : _Random(iSeed), _World(ioWorld) {}

    std::string Play(int iSteps)
    {
        for (int i = 0; i < iSteps; ++i)
            Guarded([this] { Step(); });
        return _Log;
    }
    void Called(int iName)
    {
        _Log += "call " + std::to_string(iName) + "\n";
        for (int i = Pick(4); i > 0 && _Calls < 300; --i, ++_Calls)
            Step();
        if (Pick(5) == 0)
            throw Failure{iName};
    }

private:
    template <class Body>
    void Guarded(Body iBody)
    {
        try {
            iBody();
        } catch (const Failure& failure) {
            _Log += "raised " + std::to_string(failure.name) + "\n";
        }
    }
    void Step()
    {
        switch (Pick(5)) {
        case 0:
        case 1:
            return _World.Add(_Names++, Pick(3));
        case 2:
        case 3:
            return _Names ? _World.Remove(Pick(_Names)) : void();
        default:
            return Guarded([this] { _World.Dispatch(Pick(3)); });
        }
    }
    int Pick(int iCount) { return static_cast<int>(_Random() % static_cast<unsigned>(iCount)); }

    std::mt19937 _Random;
    World& _World;
    int _Names = 0;
    int _Calls = 0; // that act: enough of them end a script that would not
    std::string _Log;
};

class ManagedWorld final : public World
{
public:
    explicit ManagedWorld(unsigned iSeed) : script(iSeed, *this) {}

    void Add(int iName, int iEvent) override
    {
        _Known.push_back(std::make_unique<Known>(Known{this, iName, 0}));
        _Known.back()->callback = _Manager.AddCallback(kEvents[iEvent], Call, _Known.back().get());
    }
    void Remove(int iName) override
    {
        _Manager.RemoveCallback(_Known[static_cast<std::size_t>(iName)]->callback);
    }
    void Dispatch(int iEvent) override
    {
        _Manager.DispatchCallbacks(kEvents[iEvent], nullptr, nullptr);
    }

    Script script;

private:
    static constexpr const char* kEvents[] = {"one", "two", "three"};
    struct Known {
        ManagedWorld* world;
        int name;
        ZORCallback callback;
    };
    static void Call(ZORBaseUnknown*, const char*, ZORNotification*, void* iData)
    {
        const auto& known = *static_cast<Known*>(iData);
        known.world->script.Called(known.name);
    }

    ZORCallbackManager _Manager;
    std::vector<std::unique_ptr<Known>> _Known;
};

// A list of all that was ever added, and a copy of it for each dispatch.
class ListWorld final : public World
{
public:
    explicit ListWorld(unsigned iSeed) : script(iSeed, *this) {}

    void Add(int, int iEvent) override { _List.push_back({iEvent, true}); }
    void Remove(int iName) override { _List[static_cast<std::size_t>(iName)].registered = false; }
    void Dispatch(int iEvent) override
    {
        std::vector<Failure> failures;
        for (std::size_t i = 0, end = _List.size(); i < end; ++i) {
            if (!_List[i].registered || _List[i].event != iEvent)
                continue;
            try {
                script.Called(static_cast<int>(i));
            } catch (const Failure& failure) {
                failures.push_back(failure);
            }
        }
        if (!failures.empty())
            throw failures.front();
    }

    Script script;

private:
    struct Known {
        int event;
        bool registered;
    };
    std::vector<Known> _List;
};

} // namespace

TEST(ZORCallbackManager, DoesWhatAPlainListDoesOverGeneratedScripts)
{
    for (unsigned seed = 1; seed <= 1500; ++seed) {
        ManagedWorld managed(seed);
        ListWorld listed(seed);
        ASSERT_EQ(managed.script.Play(25), listed.script.Play(25)) << "seed " << seed;
    }
}
