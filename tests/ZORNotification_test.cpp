#include "ZORNotification.h"

#include <gtest/gtest.h>

TEST(ZORNotification, IsMadeWithZeroAndCounted)
{
    auto* const notification = new ZORNotification(0);
    EXPECT_EQ(notification->AddRef(), 2U);
    EXPECT_EQ(notification->Release(), 1U);
    EXPECT_EQ(notification->Release(), 0U);
}

TEST(ZORNotification, KnowsItsClass)
{
    const ZORNotification notification;
    EXPECT_STREQ(notification.IsA(), "ZORNotification");
    EXPECT_EQ(notification.IsAKindOf("ZORNotification"), 1);
    EXPECT_EQ(notification.IsAKindOf("ZORBaseUnknown"), 1);
    EXPECT_EQ(notification.IsAKindOf("ZORError"), 0);
    EXPECT_EQ(notification.GetMetaObject(), ZORNotification::MetaObject());
    EXPECT_EQ(ZORNotification::MetaObject()->GetParent(), ZORBaseUnknown::MetaObject());
    EXPECT_STREQ(ZORNotification::ClassName(), "ZORNotification");
}
