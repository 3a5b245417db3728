#include "ZORSettingError.h"

#include "ZORRaisedError.h"

TEST(ZORSettingError, IsAnInternalErrorWithATextOfItsOwn)
{
    auto* const error = new ZORSettingError;
    error->SetText("settings file x: cannot open it: Permission denied");
    EXPECT_STREQ(error->IsA(), "ZORSettingError");
    EXPECT_TRUE(error->IsAKindOf("ZORInternalError"));
    EXPECT_THROW(error->Throw(nullptr, 0), ZORRaisedError);
}

TEST(ZORSettingError, IsClonedWithItsText)
{
    ZORSettingError error;
    error.SetText("text");
    ZORError* const clone = error.CloneSelf();
    ASSERT_NE(clone, nullptr);
    EXPECT_STREQ(clone->IsA(), "ZORSettingError");
    EXPECT_STREQ(clone->GetMessage(0).ConvertToChar(), "text");
    clone->Release();
}
