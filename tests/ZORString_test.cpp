#include "ZORString.h"

#include "CountedAllocations.h"
#include "ZORUnicodeString.h"

#include <cstring>
#include <sstream>

namespace
{

const std::string kLong(100, 'x');

} // namespace

TEST(ZORString, IsAnItemThatIsFilledAndCompared)
{
    ZORString* item = new ZORString("DUX_SEARCH_PATH");
    ASSERT_NE(item, nullptr);
    EXPECT_TRUE(*item == "DUX_SEARCH_PATH");
    *item = "/opt";
    item->Append("/data");
    EXPECT_STREQ(*item, "/opt/data");
    EXPECT_EQ(item->Release(), 0u);
}

TEST(ZORString, IsEmptyWhenMadeOfNothing)
{
    for (const ZORString& text :
         {ZORString(), ZORString(nullptr), ZORString(""), ZORString(ZORUnicodeString())}) {
        EXPECT_TRUE(text.IsEmpty());
        EXPECT_EQ(text.GetLength(), 0u);
        EXPECT_STREQ(text.ConvertToChar(), "");
    }
}

TEST(ZORString, KeepsTheBytesOfAnyText)
{
    for (const std::string& bytes : {std::string("né\xFF"), kLong}) {
        const ZORString fromPointer = bytes.c_str();
        const ZORString fromText{ZORUnicodeString(bytes)};
        ZORString assigned = "other";
        assigned = ZORUnicodeString(bytes);
        for (const ZORString* text :
             std::initializer_list<const ZORString*>{&fromPointer, &fromText, &assigned}) {
            EXPECT_EQ(text->ConvertToChar(), bytes);
            EXPECT_EQ(text->GetLength(), bytes.size());
            EXPECT_FALSE(text->IsEmpty());
        }
    }
}

TEST(ZORString, IsTakenWhereACharacterPointerIs)
{
    const ZORString text = "né";
    const char* pointer = text;
    EXPECT_EQ(pointer, text.ConvertToChar());
    EXPECT_EQ(std::strlen(text), 3u);
    ZORUnicodeString unicode(text);
    EXPECT_EQ(unicode, "né");
    unicode = "other";
    unicode = text;
    EXPECT_EQ(unicode, "né");
    std::ostringstream stream;
    stream << text;
    EXPECT_EQ(stream.str(), "né");
}

TEST(ZORString, ComparesTheBytes)
{
    const ZORString text = "abc";
    const ZORString same = "abc";
    const ZORString other = "ABC";
    const std::string bytes = "abc"; // elsewhere in memory
    EXPECT_TRUE(text == same);
    EXPECT_FALSE(text != same);
    EXPECT_FALSE(text == other);
    EXPECT_TRUE(text != other);
    EXPECT_TRUE(text == bytes.c_str());
    EXPECT_TRUE(bytes.c_str() == text);
    EXPECT_FALSE(text != bytes.c_str());
    EXPECT_FALSE(bytes.c_str() != text);
    EXPECT_FALSE(text == "ab");
    EXPECT_FALSE(text == "abcd");
    EXPECT_TRUE(text != "ab");
    EXPECT_TRUE("ab" != text);
    EXPECT_TRUE(text == ZORUnicodeString("abc"));
    EXPECT_TRUE(ZORUnicodeString("ab") != text);
}

TEST(ZORString, ComparesNullAsTheEmptyText)
{
    const char* null = nullptr;
    EXPECT_TRUE(ZORString() == null);
    EXPECT_TRUE(null == ZORString());
    EXPECT_TRUE(ZORString("a") != null);
}

TEST(ZORString, AssignsFromACharacterPointer)
{
    ZORString text = "abc";
    text = "de";
    EXPECT_EQ(text, "de");
    text = static_cast<const char*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(ZORString, AssignsAndAppendsPartsOfItself)
{
    ZORString text = "abc";
    text = text.ConvertToChar() + 1;
    EXPECT_EQ(text, "bc");
    text.Append(text);
    EXPECT_EQ(text, "bcbc");
    text.Append(text.ConvertToChar() + 1, 2);
    EXPECT_EQ(text, "bcbccb");
    const ZORString& alias = text;
    text = alias;
    EXPECT_EQ(text, "bcbccb");
    for (int i = 0; i < 5; ++i) // over the end of the room in the object
        text.Append(text);
    EXPECT_EQ(text.GetLength(), 6u * 32u);
    EXPECT_STREQ(text.ConvertToChar() + 6 * 31, "bcbccb");
}

TEST(ZORString, AppendsTextsAndPieces)
{
    ZORString text;
    text.Append("ab").Append(nullptr).Append("").Append("cdef", 2).Append(nullptr, 3);
    EXPECT_EQ(text, "abcd");
    text.Append("e\0f", 3);
    EXPECT_EQ(text, "abcde");
    EXPECT_EQ(text.GetLength(), 5u);
    text.Append("f", 100);
    EXPECT_EQ(text, "abcdef");
}

TEST(ZORString, KeepsItsRoomWhenItIsFilledAgain)
{
    ZORString buffer = (kLong + kLong).c_str();
    const ZORUnicodeString unicode(kLong);
    const ZORString other = kLong.c_str();
    const CountedAllocations allocations;
    for (int i = 0; i < 3; ++i) {
        buffer = "";
        buffer.Append(kLong.c_str());
        buffer = static_cast<const char*>(nullptr);
        buffer = kLong.c_str();
        buffer = unicode;
        buffer = other;
    }
    EXPECT_EQ(allocations.Count(), 0);
    EXPECT_EQ(buffer, kLong.c_str());
}

TEST(ZORString, CopiesAreComponentsOfTheirOwn)
{
    ZORString* item = new ZORString("abc");
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->AddRef(), 2u);
    ZORString* copy = new ZORString(*item);
    ASSERT_NE(copy, nullptr);
    item->Append("d");
    EXPECT_EQ(*copy, "abc");
    EXPECT_EQ(copy->Release(), 0u);
    EXPECT_EQ(item->Release(), 1u);
    EXPECT_EQ(item->Release(), 0u);
}

TEST(ZORString, IsDeletedThroughItsBase)
{
    const CountedAllocations allocations;
    ZORBaseUnknown* item = new ZORString(kLong.c_str());
    ASSERT_NE(item, nullptr);
    EXPECT_GT(allocations.Live(), 0);
    delete item;
    EXPECT_EQ(allocations.Live(), 0);
}

TEST(ZORString, KnowsItsClass)
{
    const ZORString text;
    const ZORBaseUnknown& component = text;
    EXPECT_STREQ(component.IsA(), "ZORString");
    EXPECT_STREQ(ZORString::ClassName(), "ZORString");
    EXPECT_EQ(component.IsAKindOf("ZORString"), 1);
    EXPECT_EQ(component.IsAKindOf("ZORBaseUnknown"), 1);
    EXPECT_EQ(component.IsAKindOf("ZORUnicodeString"), 0);
    EXPECT_EQ(component.GetMetaObject(), ZORString::MetaObject());
    EXPECT_EQ(ZORString::MetaObject()->GetParent(), ZORBaseUnknown::MetaObject());
    EXPECT_EQ(ZORString::MetaObject()->GetKind(), ZORKindImplementation);
    EXPECT_EQ(QueryMetaObject("ZORString"), ZORString::MetaObject());
    EXPECT_EQ(QueryMetaObject(ZORString::ClassId()), ZORString::MetaObject());
}

TEST(ZORString, StaysAsItWasWhenMemoryRunsOut)
{
    ZORString text = "abc";
    const ZORUnicodeString lengthy(kLong);
    const ZORString other = kLong.c_str();
    {
        const ScopedMemoryShortage shortage;
        EXPECT_THROW(ZORString{kLong.c_str()}, std::bad_alloc);
        EXPECT_THROW(text = kLong.c_str(), std::bad_alloc);
        EXPECT_THROW(text = lengthy, std::bad_alloc);
        EXPECT_THROW(text = other, std::bad_alloc);
        EXPECT_THROW(text.Append(kLong.c_str()), std::bad_alloc);
        EXPECT_THROW(text.Append(kLong.c_str(), 50), std::bad_alloc);
    }
    EXPECT_EQ(text, "abc");
}
