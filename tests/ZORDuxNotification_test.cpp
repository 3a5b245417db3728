#include "ZORDuxNotification.h"

#include "VirtualTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

TEST(ZORDuxNotification, HandsItsTwoPointersBack)
{
    int object = 0;
    char data = 0;
    const ZORDuxNotification notification(&object, &data);
    EXPECT_EQ(notification.Object(), &object);
    EXPECT_EQ(notification.Data(), &data);
    const ZORDuxNotification empty(nullptr, nullptr);
    EXPECT_EQ(empty.Object(), nullptr);
    EXPECT_EQ(empty.Data(), nullptr);
}

TEST(ZORDuxNotification, HasTheClassOfItsBase)
{
    const ZORDuxNotification notification(nullptr, nullptr);
    EXPECT_STREQ(notification.IsA(), "ZORNotification");
    EXPECT_EQ(notification.GetMetaObject(), ZORNotification::MetaObject());
    EXPECT_EQ(notification.IsAKindOf("ZORNotification"), 1);
    EXPECT_EQ(notification.IsAKindOf("ZORDuxNotification"), 0);
}

TEST(ZORDuxNotification, KeepsTheOrderOfItsVirtualOperations)
{
    const ZORDuxNotification notification(nullptr, nullptr);
    EXPECT_THAT(
        VirtualTable(&notification, 12),
        testing::ElementsAre(
            "ZORBaseUnknown::QueryInterface(GUID const&, void**)", "ZORBaseUnknown::AddRef()",
            "ZORBaseUnknown::Release()", "ZORDuxNotification::~ZORDuxNotification()",
            "ZORDuxNotification::~ZORDuxNotification()", "ZORNotification::GetMetaObject() const",
            "ZORNotification::IsA() const", "ZORNotification::IsAKindOf(char const*) const",
            "ZORBaseUnknown::IsNull() const",
            "ZORBaseUnknown::IsEqual(ZORBaseUnknown const*) const",
            "ZORBaseUnknown::SetImpl(ZORBaseUnknown*)",
            "ZORBaseUnknown::QueryInterface(char const*) const"));
}
