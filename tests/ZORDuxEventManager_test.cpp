#include "ZORDuxEventManager.h"

#include "CountedAllocations.h"
#include "RaisedBy.h"
#include "ReceivedEvent.h"
#include "VirtualTable.h"
#include "ZORCallbackManager.h"
#include "ZORDuxNotification.h"
#include "ZORInternalError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{

void RaiseError(ZORBaseUnknown*, const char*, ZORNotification*, void* iData)
{
    static_cast<ZORError*>(iData)->Throw("unit", 7);
}

} // namespace

TEST(ZORDuxEventManager, CallsWhatOtherModulesRegistered)
{
    ReceivedEvent received;
    ZORDuxEventManager* const manager = ZORDuxEventManager::GetEventManager();
    const ZORCallback callback =
        manager->GetCallbackManager()->AddCallback("PartOpened", Receive, &received);
    ZORDuxNotification notification(nullptr, nullptr);
    ZORDuxEventManager::DispatchEvent("PartOpened", &notification);
    EXPECT_EQ(received.sender, manager);
    EXPECT_EQ(received.event, "PartOpened");
    EXPECT_EQ(received.notification, &notification);
    EXPECT_EQ(received.calls, 1);
    manager->GetCallbackManager()->RemoveCallback(callback);
    ZORDuxEventManager::DispatchEvent("PartOpened", &notification);
    EXPECT_EQ(received.calls, 1);
}

TEST(ZORDuxEventManager, IsOneForTheProcess)
{
    ZORDuxEventManager* const manager = ZORDuxEventManager::GetEventManager();
    ASSERT_NE(manager, nullptr);
    EXPECT_EQ(ZORDuxEventManager::GetEventManager(), manager);
    EXPECT_EQ(manager->AddRef(), 2U);
    manager->Release();
}

TEST(ZORDuxEventManager, IsOneForThreadsThatComeFirstAtOnce)
{
    std::vector<ZORDuxEventManager*> got(4);
    std::vector<std::thread> threads;
    for (ZORDuxEventManager*& each : got)
        threads.emplace_back([&each] {
            each = ZORDuxEventManager::GetEventManager();
            EXPECT_NE(each->GetCallbackManager(), nullptr); // what another thread made is whole
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(got, testing::Each(ZORDuxEventManager::GetEventManager()));
}

TEST(ZORDuxEventManager, DispatchOfAnEventNobodyWantsDoesNothing)
{
    ReceivedEvent received;
    ZORDuxEventManager manager;
    manager.GetCallbackManager()->AddCallback("event", Receive, &received);
    manager.Dispatch("another", nullptr);
    manager.Dispatch(nullptr, nullptr);
    ZORDuxEventManager::DispatchEvent("event", nullptr);
    ZORDuxEventManager::DispatchEvent(nullptr, nullptr);
    EXPECT_EQ(received.calls, 0);
}

TEST(ZORDuxEventManager, GivesItselfAsTheSender)
{
    ReceivedEvent received;
    ZORDuxEventManager manager;
    EXPECT_EQ(manager.GetCallbackManager(), manager.GetCallbackManager());
    manager.GetCallbackManager()->AddCallback("event", Receive, &received);
    manager.Dispatch("event", nullptr);
    EXPECT_EQ(received.sender, &manager);
    EXPECT_EQ(received.notification, nullptr);
}

TEST(ZORDuxEventManager, TheFirstErrorReachesTheSender)
{
    ReceivedEvent received;
    ZORDuxEventManager manager;
    auto* const error = new ZORInternalError(1);
    manager.GetCallbackManager()->AddCallback("event", RaiseError, error);
    manager.GetCallbackManager()->AddCallback("event", Receive, &received);
    EXPECT_EQ(RaisedBy([&] { manager.Dispatch("event", nullptr); }).Get(), error);
    EXPECT_EQ(received.calls, 1);
}

TEST(ZORDuxEventManager, TakesItsCallbackManagerAlong)
{
    const CountedAllocations counted;
    auto* const manager = new ZORDuxEventManager;
    manager->GetCallbackManager()->AddCallback("event", Receive, nullptr);
    EXPECT_GT(counted.Live(), 0);
    manager->Release();
    EXPECT_EQ(counted.Live(), 0);
}

TEST(ZORDuxEventManager, DispatchesNothingWhenThereWasNoMemoryForItsCallbacks)
{
    const auto manager = [] {
        const ScopedMemoryShortage shortage;
        return ZORHandle<ZORDuxEventManager>::Adopt(new ZORDuxEventManager);
    }();
    ASSERT_TRUE(manager);
    EXPECT_EQ(manager->GetCallbackManager(), nullptr);
    manager->Dispatch("event", nullptr);
}

TEST(ZORDuxEventManager, HasTheClassOfItsBase)
{
    const ZORDuxEventManager manager;
    EXPECT_STREQ(manager.IsA(), "ZORBaseUnknown");
    EXPECT_EQ(manager.GetMetaObject(), ZORBaseUnknown::MetaObject());
    EXPECT_EQ(manager.IsAKindOf("ZORDuxEventManager"), 0);
}

TEST(ZORDuxEventManager, KeepsTheOrderOfItsVirtualOperations)
{
    const ZORDuxEventManager manager;
    EXPECT_THAT(
        VirtualTable(&manager, 12),
        testing::ElementsAre(
            "ZORBaseUnknown::QueryInterface(GUID const&, void**)", "ZORBaseUnknown::AddRef()",
            "ZORBaseUnknown::Release()", "ZORDuxEventManager::~ZORDuxEventManager()",
            "ZORDuxEventManager::~ZORDuxEventManager()", "ZORBaseUnknown::GetMetaObject() const",
            "ZORBaseUnknown::IsA() const", "ZORBaseUnknown::IsAKindOf(char const*) const",
            "ZORBaseUnknown::IsNull() const",
            "ZORBaseUnknown::IsEqual(ZORBaseUnknown const*) const",
            "ZORBaseUnknown::SetImpl(ZORBaseUnknown*)",
            "ZORBaseUnknown::QueryInterface(char const*) const"));
}
