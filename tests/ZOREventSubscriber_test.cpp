#include "ZOREventSubscriber.h"

#include "CountedAllocations.h"
#include "ZORHandle.h"

#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <optional>
#include <string>
#include <vector>

class IDoor : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
};
ZOR_IMPLEMENT_CLASS(IDoor, ZORKindInterface, ZORBaseUnknown)

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Subscriber = ZORHandle<ZOREventSubscriber>;

Subscriber Make()
{
    return Subscriber::Adopt(new ZOREventSubscriber);
}

using Calls = std::vector<std::string>;

// Notes the event in the Calls that it gets as data.
void Note(ZORBaseUnknown*, const char* iEvent, ZORNotification*, void* ioCalls)
{
    static_cast<Calls*>(ioCalls)->push_back(iEvent);
}

// Two senders and what one subscriber heard of them.
struct Senders {
    Calls Sent(ZORCallbackManager& ioManager, const std::vector<const char*>& iEvents)
    {
        calls.clear();
        for (const char* event : iEvents)
            ioManager.DispatchCallbacks(event, nullptr, nullptr);
        return calls;
    }
    Calls SentAll(ZORCallbackManager& ioManager)
    {
        return Sent(ioManager, {"Opened", "Closed", "IDoor::Opened", "IDoor::Closed",
                                "IDoorway::Opened", "IGate::Opened"});
    }

    ZORCallbackManager first;
    ZORCallbackManager second;
    Calls calls;
};

} // namespace

TEST(ZOREventSubscriber, ReceivesTheEventsItAskedFor)
{
    Senders at;
    const Subscriber view = Make();
    EXPECT_NE(view->AddCallback(&at.first, "Opened", Note, &at.calls), 0U);
    EXPECT_THAT(at.SentAll(at.first), ElementsAre("Opened"));
    EXPECT_THAT(at.SentAll(at.second), IsEmpty());
}

TEST(ZOREventSubscriber, HandsOnSenderNotificationAndData)
{
    const Subscriber model = Make();
    const Subscriber view = Make();
    static ZORBaseUnknown* sender = nullptr;
    ZORCallbackManager* const manager = model->GetCallbackManager();
    ASSERT_NE(manager, nullptr);
    EXPECT_EQ(model->GetCallbackManager(), manager);
    EXPECT_NE(view->GetCallbackManager(), manager);
    view->AddCallback(
        manager, "Changed",
        [](ZORBaseUnknown* from, const char*, ZORNotification*, void*) { sender = from; }, nullptr);
    manager->DispatchCallbacks("Changed", nullptr, model.Get());
    EXPECT_EQ(sender, model.Get());
}

TEST(ZOREventSubscriber, RegistersNothingForNull)
{
    Senders at;
    const Subscriber view = Make();
    EXPECT_EQ(view->AddCallback(nullptr, "Opened", Note, &at.calls), 0U);
    EXPECT_EQ(view->AddCallback(&at.first, nullptr, Note, &at.calls), 0U);
    EXPECT_EQ(view->AddCallback(&at.first, "Opened", nullptr, &at.calls), 0U);
    EXPECT_EQ(view->AddSubscription(&at.first, static_cast<const char*>(nullptr), "Opened", Note,
                                    &at.calls),
              0U);
    EXPECT_EQ(view->AddSubscription(&at.first, "IDoor", nullptr, Note, &at.calls), 0U);
    EXPECT_EQ(view->AddSubscription(&at.first, fct_CreateCLSID(), "Opened", Note, &at.calls), 0U);
    EXPECT_THAT(at.SentAll(at.first), IsEmpty());

    EXPECT_EQ(view->RemoveCallback(nullptr, 1), 0);
    EXPECT_EQ(view->RemoveCallbacksOn(nullptr, "Opened"), 0);
    EXPECT_EQ(view->RemoveCallbacksOn(&at.first, nullptr), 0);
    EXPECT_EQ(view->RemoveSubscriberCallbacks(nullptr), 0);
    EXPECT_EQ(view->RemoveSubscriptionsOn(&at.first, static_cast<const char*>(nullptr), "Opened"),
              0);
    EXPECT_EQ(view->RemoveSubscriptionsOn(&at.first, "IDoor", nullptr), 0);
    EXPECT_EQ(view->RemoveSubscriptionsOn(&at.first, fct_CreateCLSID(), "Opened"), 0);
    EXPECT_EQ(view->RemoveInterfaceSubscriptions(&at.first, static_cast<const char*>(nullptr)), 0);
    EXPECT_EQ(view->RemoveInterfaceSubscriptions(nullptr, "IDoor"), 0);
    EXPECT_EQ(view->RemoveInterfaceSubscriptions(&at.first, fct_CreateCLSID()), 0);
}

TEST(ZOREventSubscriber, RemovesOneCallbackByItsHandle)
{
    Senders at;
    const Subscriber view = Make();
    const Subscriber other = Make();
    const ZORCallback first = view->AddCallback(&at.first, "Opened", Note, &at.calls);
    const ZORCallback second = view->AddCallback(&at.first, "Opened", Note, &at.calls);
    EXPECT_EQ(other->RemoveCallback(&at.first, first), 0) << "not its own";
    EXPECT_EQ(view->RemoveCallback(&at.second, first), 0);
    EXPECT_EQ(view->RemoveCallback(&at.first, first), 1);
    EXPECT_EQ(view->RemoveCallback(&at.first, first), 0);
    EXPECT_THAT(at.SentAll(at.first), ElementsAre("Opened"));
    EXPECT_EQ(view->RemoveCallback(&at.first, second), 1);
    EXPECT_THAT(at.SentAll(at.first), IsEmpty());
}

TEST(ZOREventSubscriber, RemovesItsCallbacksOnAnEventOrAllOfThem)
{
    Senders at;
    const Subscriber view = Make();
    const Subscriber other = Make();
    for (const Subscriber& each : {view, other})
        for (ZORCallbackManager* manager : {&at.first, &at.second})
            for (const char* event : {"Opened", "Opened", "Closed"})
                each->AddCallback(manager, event, Note, &at.calls);
    EXPECT_EQ(view->RemoveCallbacksOn(&at.first, "Opened"), 2);
    EXPECT_EQ(view->RemoveCallbacksOn(&at.first, "Opened"), 0);
    EXPECT_EQ(at.first.GetNbCallbacks("Opened"), 2);
    EXPECT_EQ(at.first.GetNbCallbacks("Closed"), 2);
    EXPECT_EQ(view->RemoveSubscriberCallbacks(&at.first), 1);
    EXPECT_EQ(at.first.GetNbCallbacks("Closed"), 1);
    EXPECT_EQ(at.second.GetNbCallbacks("Opened"), 4);
    EXPECT_EQ(view->RemoveSubscriberCallbacks(&at.second), 3);
    EXPECT_EQ(at.second.GetNbCallbacks("Opened"), 2);
}

TEST(ZOREventSubscriber, SubscribesToTheEventsOfAnInterface)
{
    Senders at;
    const Subscriber view = Make();
    EXPECT_NE(view->AddSubscription(&at.first, "IDoor", "Opened", Note, &at.calls), 0U);
    EXPECT_NE(view->AddSubscription(&at.first, IDoor::ClassId(), "Closed", Note, &at.calls), 0U);
    EXPECT_THAT(at.SentAll(at.first), ElementsAre("IDoor::Opened", "IDoor::Closed"));
    EXPECT_EQ(view->RemoveSubscriptionsOn(&at.first, IDoor::ClassId(), "Opened"), 1);
    EXPECT_EQ(view->RemoveSubscriptionsOn(&at.first, "IDoor", "Opened"), 0);
    EXPECT_THAT(at.SentAll(at.first), ElementsAre("IDoor::Closed"));
    EXPECT_EQ(view->RemoveSubscriptionsOn(&at.first, "IDoor", "Closed"), 1);
    EXPECT_THAT(at.SentAll(at.first), IsEmpty());
}

TEST(ZOREventSubscriber, RemovesTheSubscriptionsOnAllEventsOfAnInterface)
{
    Senders at;
    const Subscriber view = Make();
    for (ZORCallbackManager* manager : {&at.first, &at.second}) {
        for (const char* interface : {"IDoor", "IDoorway", "IGate"})
            view->AddSubscription(manager, interface, "Opened", Note, &at.calls);
        view->AddSubscription(manager, "IDoor", "Closed", Note, &at.calls);
        view->AddCallback(manager, "Opened", Note, &at.calls);
    }
    EXPECT_EQ(view->RemoveInterfaceSubscriptions(&at.first, "IDoor"), 2);
    EXPECT_EQ(view->RemoveInterfaceSubscriptions(&at.first, IDoor::ClassId()), 0);
    EXPECT_THAT(at.SentAll(at.first), ElementsAre("Opened", "IDoorway::Opened", "IGate::Opened"));
    EXPECT_EQ(at.SentAll(at.second).size(), 5U);
    EXPECT_EQ(view->RemoveInterfaceSubscriptions(&at.second, IDoor::ClassId()), 2);
    EXPECT_EQ(view->RemoveSubscriberCallbacks(&at.second), 3);
}

TEST(ZOREventSubscriber, TakesCallbacksBackWithoutAnAllocation)
{
    ZORCallbackManager manager;
    const Subscriber view = Make();
    const char* const event = "an event of a name that is long";
    for (int i = 0; i < 3; ++i)
        view->AddCallback(&manager, event, Note, nullptr);
    const ZORCallback last = view->AddCallback(&manager, "another of a long name", Note, nullptr);
    view->AddCallback(&manager, "a third one of a long name", Note, nullptr);
    const CountedAllocations counted;
    EXPECT_EQ(view->RemoveCallbacksOn(&manager, event), 3);
    EXPECT_EQ(view->RemoveCallback(&manager, last), 1);
    EXPECT_EQ(view->RemoveSubscriberCallbacks(&manager), 1);
    EXPECT_EQ(counted.Count(), 0);
}

TEST(ZOREventSubscriber, TakesThousandsOfEventsBackOneByOne)
{
    constexpr int kEvents = 10'000;
    Senders at;
    const Subscriber view = Make();
    std::vector<std::string> names;
    for (int i = 0; i < kEvents; ++i)
        names.push_back("I" + std::to_string(i));
    for (const std::string& each : names) {
        view->AddCallback(&at.first, each.c_str(), Note, &at.calls);
        view->AddSubscription(&at.first, each.c_str(), "Opened", Note, &at.calls);
        view->AddSubscription(&at.first, each.c_str(), "Closed", Note, &at.calls);
    }
    for (const std::string& each : names) {
        ASSERT_EQ(view->RemoveCallbacksOn(&at.first, each.c_str()), 1);
        ASSERT_EQ(view->RemoveSubscriptionsOn(&at.first, each.c_str(), "Opened"), 1);
        ASSERT_EQ(view->RemoveInterfaceSubscriptions(&at.first, each.c_str()), 1);
    }
    EXPECT_EQ(view->RemoveSubscriberCallbacks(&at.first), 0);
}

TEST(ZOREventSubscriber, TakesItsCallbacksBackWhenItGoes)
{
    Senders at;
    Subscriber view = Make();
    view->AddCallback(&at.first, "Opened", Note, &at.calls);
    view->AddSubscription(&at.second, "IDoor", "Opened", Note, &at.calls);
    view = nullptr;
    EXPECT_THAT(at.SentAll(at.first), IsEmpty());
    EXPECT_THAT(at.SentAll(at.second), IsEmpty());
    EXPECT_EQ(at.first.GetNbCallbacks("Opened"), 0);
}

TEST(ZOREventSubscriber, ManagersMayGoFirst)
{
    Senders at;
    const Subscriber view = Make();
    for (int i = 0; i < 100; ++i) {
        Subscriber model = Make();
        view->AddCallback(model->GetCallbackManager(), "Changed", Note, &at.calls);
    }
    view->AddCallback(&at.first, "Opened", Note, &at.calls);
    EXPECT_THAT(at.SentAll(at.first), ElementsAre("Opened"));
}

TEST(ZOREventSubscriber, ManagersThatAreGoneLeaveNothingBehind)
{
    const Subscriber view = Make();
    const CountedAllocations counted;
    {
        std::deque<std::optional<ZORCallbackManager>> places; // another for each manager
        for (int i = 0; i < 10000; ++i) {
            std::optional<ZORCallbackManager>& manager = places.emplace_back(std::in_place);
            view->AddCallback(&*manager, "Changed", Note, nullptr);
            manager.reset();
        }
    }
    EXPECT_LT(counted.Live(), 100);
}

TEST(ZOREventSubscriber, LackOfMemoryOnAddingChangesNothing)
{
    ZORCallback callback = 0;
    for (long granted = 0; callback == 0; ++granted) {
        ASSERT_LT(granted, 30);
        const Subscriber view = Make();
        ZORCallbackManager manager;
        const ScopedMemoryShortage shortage(granted);
        try {
            callback =
                view->AddCallback(&manager, "an event of a name that is long", Note, nullptr);
            EXPECT_EQ(manager.GetNbCallbacks("an event of a name that is long"), 1);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(manager.GetNbCallbacks("an event of a name that is long"), 0) << granted;
        }
    }
}

TEST(ZOREventSubscriber, ARecordOfAManagerThatIsGoneTakesNothingFromTheNextInItsPlace)
{
    Senders at;
    const Subscriber view = Make();
    const Subscriber other = Make();
    alignas(ZORCallbackManager) unsigned char place[sizeof(ZORCallbackManager)];
    auto* const before = new (place) ZORCallbackManager;
    const ZORCallback handle = view->AddCallback(before, "IDoor::Opened", Note, &at.calls);
    before->~ZORCallbackManager();
    auto* const after = new (place) ZORCallbackManager;
    ASSERT_EQ(other->AddCallback(after, "IDoor::Opened", Note, &at.calls), handle);
    EXPECT_EQ(view->RemoveInterfaceSubscriptions(after, "IDoor"), 0);
    EXPECT_EQ(view->RemoveCallback(after, handle), 0);
    view->AddCallback(after, "Closed", Note, &at.calls);
    EXPECT_EQ(after->GetNbCallbacks("IDoor::Opened"), 1);
    EXPECT_EQ(view->RemoveSubscriberCallbacks(after), 1);
    EXPECT_EQ(other->RemoveCallback(after, handle), 1);
    after->~ZORCallbackManager();
}

TEST(ZOREventSubscriber, AHandleOfAManagerThatIsGoneRemovesNothingFromTheNextInItsPlace)
{
    Senders at;
    const Subscriber view = Make();
    const Subscriber other = Make();
    alignas(ZORCallbackManager) unsigned char place[sizeof(ZORCallbackManager)];
    auto* const before = new (place) ZORCallbackManager;
    const ZORCallback handle = view->AddCallback(before, "Opened", Note, &at.calls);
    before->~ZORCallbackManager();
    auto* const after = new (place) ZORCallbackManager;
    ASSERT_EQ(other->AddCallback(after, "Opened", Note, &at.calls), handle);
    EXPECT_EQ(view->RemoveCallback(after, handle), 0);
    EXPECT_EQ(after->GetNbCallbacks("Opened"), 1);
    EXPECT_EQ(other->RemoveCallback(after, handle), 1);
    after->~ZORCallbackManager();
}

TEST(ZOREventSubscriber, SenderAndSubscriberMayBothGoDuringADispatch)
{
    Subscriber view = Make();
    Subscriber model = Make();
    ZORCallbackManager* const manager = model->GetCallbackManager();
    Subscriber* both[] = {&model, &view};
    view->AddCallback(
        manager, "Changed",
        [](ZORBaseUnknown*, const char*, ZORNotification*, void* handles) {
            for (int i = 0; i < 2; ++i)
                *static_cast<Subscriber**>(handles)[i] = nullptr;
        },
        both);
    manager->DispatchCallbacks("Changed", nullptr, nullptr);
    EXPECT_FALSE(view || model);
}

TEST(ZOREventSubscriber, MayGoDuringADispatch)
{
    Senders at;
    Subscriber view = Make();
    at.first.AddCallback(
        "Opened",
        [](ZORBaseUnknown*, const char*, ZORNotification*, void* handle) {
            *static_cast<Subscriber*>(handle) = nullptr;
        },
        &view);
    view->AddCallback(&at.first, "Opened", Note, &at.calls);
    EXPECT_THAT(at.Sent(at.first, {"Opened"}), IsEmpty());
    EXPECT_FALSE(view);
}

TEST(ZOREventSubscriber, ASenderMayGoDuringItsDispatchBeforeItsSubscribers)
{
    Senders at;
    const Subscriber view = Make();
    Subscriber model = Make();
    ZORCallbackManager* const manager = model->GetCallbackManager();
    struct Step {
        Subscriber* model;
        const Subscriber* view;
        ZORCallbackManager* manager;
    } step{&model, &view, manager};
    view->AddCallback(
        manager, "Changed",
        [](ZORBaseUnknown*, const char*, ZORNotification*, void* data) {
            *static_cast<Step*>(data)->model = nullptr; // nobody else holds the sender
            EXPECT_EQ((*static_cast<Step*>(data)->view)->RemoveInterfaceSubscriptions(nullptr, "I"),
                      0);
        },
        &step);
    view->AddCallback(manager, "Changed", Note, &at.calls);
    manager->DispatchCallbacks("Changed", nullptr, nullptr);
    EXPECT_FALSE(model);
    EXPECT_THAT(at.calls, IsEmpty());
}

TEST(ZOREventSubscriber, ACopyHasNoCallbacksAndAManagerOfItsOwn)
{
    Senders at;
    const Subscriber view = Make();
    view->AddCallback(&at.first, "Opened", Note, &at.calls);
    {
        const Subscriber copy = Subscriber::Adopt(new ZOREventSubscriber(*view));
        EXPECT_EQ(copy->RemoveSubscriberCallbacks(&at.first), 0);
        EXPECT_NE(copy->GetCallbackManager(), view->GetCallbackManager());
        *copy = *view;
        EXPECT_EQ(copy->RemoveSubscriberCallbacks(&at.first), 0);
    }
    EXPECT_EQ(view->RemoveSubscriberCallbacks(&at.first), 1);
}

TEST(ZOREventSubscriber, KnowsItsClass)
{
    const Subscriber view = Make();
    EXPECT_STREQ(view->IsA(), "ZOREventSubscriber");
    EXPECT_EQ(view->IsAKindOf("ZORBaseUnknown"), 1);
}
