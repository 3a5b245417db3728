#include "ZORMsgError.h"

#include "ZORHandle.h"

#include <gtest/gtest.h>

TEST(ZORMsgError, IsAnErrorOfTheFramework)
{
    ZORMsgError error;
    EXPECT_STREQ(error.IsA(), "ZORMsgError");
    EXPECT_EQ(error.IsAKindOf("ZORInternalError"), 1);
    EXPECT_EQ(error.GetId(), 0U);
}

TEST(ZORMsgError, AClonedErrorIsOneOfItsOwn)
{
    ZORMsgError error;
    error.SetText("text").Setup("some/File", 12);
    ZORError* const clone = error.CloneSelf();
    error.SetText("another");
    EXPECT_STREQ(clone->IsA(), "ZORMsgError");
    EXPECT_EQ(clone->GetMessage(0), "text");
    EXPECT_EQ(clone->GetLine(), 12);
    EXPECT_EQ(clone->Release(), 0U);
}
