#include "ZORDUXNLSError.h"

#include "CapturedOutput.h"
#include "CatalogSite.h"
#include "CountedAllocations.h"
#include "RaisedBy.h"
#include "VirtualTable.h"
#include "ZORMetaClass.h"
#include "ZORMsgError.h"
#include "ZORXHContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <string>
#include <unistd.h>

using ::testing::ElementsAre;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

TEST(ZORDUXNLSError, BeginsBare)
{
    ZORDUXNLSError error;
    EXPECT_EQ(error.GetId(), 0U);
    EXPECT_EQ(error.GetMessage(), "");
    EXPECT_EQ(ZORDUXNLSError(77).GetId(), 77U);
}

TEST(ZORDUXNLSError, HasTheIdentityOfItsClass)
{
    ZORMetaClass* const meta = ZORDUXNLSError::MetaObject();
    EXPECT_EQ(ZORDUXNLSError::MetaObject(), meta);
    EXPECT_EQ(QueryMetaObject("ZORDUXNLSError"), meta);
    EXPECT_STREQ(ZORDUXNLSError::ClassName(), "ZORDUXNLSError");
    EXPECT_EQ(ZORDUXNLSError::ClassId(), meta->GetClassId());
    EXPECT_EQ(QueryMetaObject(ZORDUXNLSError::ClassId()), meta);
    EXPECT_EQ(meta->GetKind(), 1);
    EXPECT_EQ(meta->GetParent(), ZORInternalError::MetaObject());
    EXPECT_EQ(ZORDUXNLSError::CreateItself(), nullptr);

    ZORDUXNLSError error;
    EXPECT_EQ(error.GetMetaObject(), meta);
    EXPECT_STREQ(error.IsA(), "ZORDUXNLSError");
    for (const char* name : {"ZORDUXNLSError", "ZORInternalError", "ZORError", "ZORBaseUnknown"})
        EXPECT_EQ(error.IsAKindOf(name), 1) << name;
    EXPECT_EQ(error.IsAKindOf("ZORDuxServicesMsg"), 0);
}

TEST(ZORDUXNLSError, SetupAddsAPlaceAndReturnsTheError)
{
    ZORDUXNLSError error;
    EXPECT_EQ(&error.Setup("some/File", 12), &error);
    EXPECT_STREQ(error.GetFile(), "some/File");
    EXPECT_EQ(error.GetLine(), 12);
    EXPECT_EQ(error.ZORError::GetMessage(0), "ZORDUXNLSError raised in some/File, line 12");
    EXPECT_EQ(error.GetMessage(1), "ZORDUXNLSError (0x0) raised in some/File, line 12");
    EXPECT_EQ(error.GetMessage(), "");
}

TEST(ZORDUXNLSError, AlwaysReportsOneDescriptorThatIsAllZero)
{
    ZORDUXNLSError error;
    unsigned int count = 0;
    const ZORErrDsc* table = nullptr;
    error.GetErrorTable(&count, &table);
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(table, ZORDUXNLSError::errorTable);
    EXPECT_EQ(table->id, 0U);
    EXPECT_EQ(table->text, nullptr);
    EXPECT_EQ(ZORDUXNLSError::errorTableLength, 1U);
}

TEST(ZORDUXNLSError, AClonedErrorIsOneOfItsOwn)
{
    ZORDUXNLSError error(5);
    error.SetText("Out of paper.").Setup("some/File", 12);
    const ZORHandle<ZORError> clone(error.CloneSelf());
    clone->Release();
    EXPECT_STREQ(clone->IsA(), "ZORDUXNLSError");
    EXPECT_EQ(clone->GetMessage(1), error.GetMessage(1));
    EXPECT_EQ(clone->GetLine(), 12);
    error.SetText("Out of ink.");
    EXPECT_EQ(clone->GetMessage(0), "Out of paper.");
}

TEST(ZORDUXNLSError, KeepsTheOrderOfItsVirtualOperations)
{
    ZORDUXNLSError error;
    EXPECT_THAT(
        VirtualTable(&error, 18),
        ElementsAre(
            "ZORBaseUnknown::QueryInterface(GUID const&, void**)", "ZORBaseUnknown::AddRef()",
            "ZORBaseUnknown::Release()", "ZORDUXNLSError::~ZORDUXNLSError()",
            "ZORDUXNLSError::~ZORDUXNLSError()", "ZORDUXNLSError::GetMetaObject() const",
            "ZORDUXNLSError::IsA() const", "ZORDUXNLSError::IsAKindOf(char const*) const",
            "ZORBaseUnknown::IsNull() const",
            "ZORBaseUnknown::IsEqual(ZORBaseUnknown const*) const",
            "ZORBaseUnknown::SetImpl(ZORBaseUnknown*)",
            "ZORBaseUnknown::QueryInterface(char const*) const", "ZORError::GetMessage(int)",
            "ZORError::Display(int, std::ostream&)", "ZORError::PrintHistory(std::ostream&)",
            "ZORError::Throw(char const*, int)", "ZORDUXNLSError::CloneSelf()",
            "ZORDUXNLSError::GetErrorTable(unsigned int*, ZORErrDsc const**)"));
}

TEST(ZORDUXNLSError, TakesItsTextFromACatalog)
{
    const CatalogSite site;
    site.Write("Site", "Locked = 'The part {1} is locked by {2}.'\n");
    ZORUnicodeString parameters[] = {"plate", "ann"};
    ZORDUXNLSError error;
    error.SetNLSMsg("Site", "Locked", 2, parameters);
    EXPECT_EQ(error.GetMessage(), "The part plate is locked by ann.");
}

TEST(ZORDUXNLSError, DoesNotLookAtTheCountOfParameters)
{
    const CatalogSite site;
    site.Write("Site", "Key = '{1} {2}'\n");
    ZORUnicodeString parameters[] = {"one", "two"};
    for (const int count : {0, 1, 2, -7, 1000000}) {
        ZORDUXNLSError error;
        error.SetNLSMsg("Site", "Key", count, parameters);
        EXPECT_EQ(error.GetMessage(), "one two") << count;
    }
}

TEST(ZORDUXNLSError, ANullArrayGivesNoParameters)
{
    const CatalogSite site;
    site.Write("Site", "Key = '{1} {2}'\n");
    ZORDUXNLSError error;
    error.SetNLSMsg("Site", "Key", 2, nullptr);
    EXPECT_EQ(error.GetMessage(), "{1} {2}");
}

TEST(ZORDUXNLSError, AnErrorOnTheWayBecomesTheTextAndIsToldOnce)
{
    const CatalogSite site;
    const std::string damaged = site.Write("Damaged", "=\n");
    site.Write("Site", "Key = 'text'\n");
    const struct {
        const char* catalog;
        const char* key;
        std::string text;
    } rows[] = {
        {"Nobody", "Key", "message catalog Nobody: not found (asked for Key)"},
        {"", "", "message catalog : not found (asked for )"},
        {"Site", "Lost", "message catalog Site: there is no text for Lost"},
        {"Damaged", "Key", "message catalog " + damaged + ": line 1, column "},
    };
    for (const auto& row : rows) {
        ZORDUXNLSError error;
        const CapturedOutput output(STDOUT_FILENO);
        const CapturedOutput history(STDERR_FILENO);
        error.SetNLSMsg(row.catalog, row.key, 0, nullptr);
        EXPECT_THAT(error.GetMessage().ConvertToChar(), StartsWith(row.text));
        EXPECT_EQ(output.Text(), std::string(error.GetMessage().ConvertToChar()) + "\n");
        EXPECT_THAT(
            history.Text(),
            MatchesRegex("ZORMsgError raised in Platform/Catalogs.m/src/ZORMsgCatalog, line "
                         "[0-9]+\n"));
    }
    EXPECT_EQ(ZORXHContext::GetDepth(), 0);
}

TEST(ZORDUXNLSError, WhatIsRaisedOnTheWayAndIsNoErrorGoesOn)
{
    const CatalogSite site;
    ZORDUXNLSError error;
    ZORMsgError::MetaObject()->SetParent(ZORBaseUnknown::MetaObject());
    const CapturedOutput output(STDOUT_FILENO);
    const CapturedOutput history(STDERR_FILENO);
    const ZORHandle<ZORError> raised =
        RaisedBy([&] { error.SetNLSMsg("Nobody", "A", 0, nullptr); });
    EXPECT_STREQ(raised->IsA(), "ZORMsgError");
    EXPECT_STREQ(raised->GetFile(), "Platform/Catalogs.m/src/ZORMsgCatalog");
    EXPECT_EQ(error.GetMessage(), "");
    EXPECT_EQ(output.Text() + history.Text(), "");
    std::ostringstream places;
    raised->PrintHistory(places);
    EXPECT_THAT(places.str(), MatchesRegex("ZORMsgError raised in [^\n]*\n")) << "none is added";
    EXPECT_EQ(ZORXHContext::GetDepth(), 0);
}

TEST(ZORDUXNLSError, SaysSoWhenThereIsNoMemoryForACatalogsNames)
{
    const CatalogSite site;
    site.Write("Site", "A = 'a text as long as the one that says that there is no memory'\n");
    for (long granted = 0;; ++granted) {
        ASSERT_LT(granted, 100);
        ZORDUXNLSError error;
        error.SetNLSMsg("Site", "A", 0, nullptr); // leaves room for a text
        try {
            const ScopedMemoryShortage shortage(granted);
            error.SetNLSMsg("Site", "A", 0, nullptr);
        } catch (const std::bad_alloc&) { // met behind the catalog
            EXPECT_GT(granted, 0);
            break;
        }
        EXPECT_EQ(error.GetMessage(), "ZORDUXNLSError::SetNLSMsg - Internal error");
    }
}

TEST(ZORDUXNLSError, ALaterTextReplacesAnEarlierOne)
{
    const CatalogSite site;
    site.Write("Site", "A = 'a'\nB = 'b'\n");
    ZORDUXNLSError error;
    error.SetNLSMsg("Site", "A", 0, nullptr);
    error.SetNLSMsg("Site", "B", 0, nullptr);
    EXPECT_EQ(error.GetMessage(), "b");
}

TEST(ZORDUXNLSError, ItsCatalogTextIsNotItsErrorText)
{
    const CatalogSite site;
    site.Write("Site", "A = 'a'\n");
    ZORDUXNLSError error;
    error.Setup("some/File", 12).SetNLSMsg("Site", "A", 0, nullptr);
    EXPECT_EQ(error.ZORError::GetMessage(0), "ZORDUXNLSError raised in some/File, line 12");
}

TEST(ZORDUXNLSError, AClonedErrorHasTheSameCatalogText)
{
    const CatalogSite site;
    site.Write("Site", "A = 'a'\nB = 'b'\n");
    ZORDUXNLSError error(5);
    error.SetNLSMsg("Site", "A", 0, nullptr);
    const auto clone = ZORHandle<ZORError>::Adopt(error.CloneSelf());
    error.SetNLSMsg("Site", "B", 0, nullptr);
    EXPECT_EQ(static_cast<ZORDUXNLSError&>(*clone).GetMessage(), "a");
    EXPECT_EQ(clone->GetId(), 5U);
}
