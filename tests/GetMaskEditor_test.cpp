#include "GetMaskEditor.h"

#include "CapturedOutput.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "TraceLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

TEST(GetMaskEditor, GivesANullHandleAndSilenceWithoutAnImplementation)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    const CapturedOutput errors(STDERR_FILENO);
    EXPECT_FALSE(GetMaskEditor());
    EXPECT_EQ(errors.Text(), "");
    EXPECT_THAT(lines.Taken(), ::testing::IsEmpty());
}

TEST(GetMaskEditor, FindsAnImplementationThroughADictionaryFile)
{
    const ScopedDirectory dictionary;
    dictionary.Write("mask.toml", "[[adapter]]\nclass = \"DUXMaskEditor\"\n"
                                  "interface = \"ZORIDuxMaskEditor\"\nlibrary = \"" KW_COMPANION
                                  "\"\ncreator = \"CreateTIEZORIDuxMaskEditorTestGuard\"\n");
    const ScopedEnvironment path("ZOR_DICTIONARY_PATH", dictionary.Path().string());
    const ZORIDuxMaskEditor_var first = GetMaskEditor();
    const ZORIDuxMaskEditor_var second = GetMaskEditor();
    ASSERT_TRUE(first && second);
    EXPECT_FALSE(first == second);
    first->PutMask("number", "##-####");
    EXPECT_EQ(first->GetMask("number"), "##-####");
    EXPECT_EQ(second->GetMask("number"), "");
    EXPECT_STREQ(ZORBaseUnknown_var(first)->IsA(), "DUXMaskEditor");
}
