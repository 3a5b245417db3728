#include "ZORListValZORUnicodeString.h"

#include "CountedAllocations.h"
#include "ZORInternalError.h"
#include "ZORRaisedError.h"

#include <climits>
#include <type_traits>

using testing::ElementsAre;

namespace
{

const std::string kLong(100, 'x');

ZORListValZORUnicodeString ListOf(std::initializer_list<const char*> iTexts)
{
    ZORListValZORUnicodeString list;
    for (const char* text : iTexts)
        list.Append(text);
    return list;
}

// The text of the error that an index raises; empty when it raises none.
template <class List>
std::string ErrorOf(List& iList, int iIndex)
{
    try {
        (void)iList[iIndex];
        return "";
    } catch (const ZORRaisedError& raised) {
        EXPECT_EQ(raised.Error().IsAKindOf("ZORInternalError"), 1);
        EXPECT_STREQ(raised.Error().GetFile(), "Platform/Text.m/src/ZORListValZORUnicodeString");
        EXPECT_GT(raised.Error().GetLine(), 0);
        return raised.Error().GetMessage(0).ConvertToChar();
    }
}

} // namespace

TEST(ZORListValZORUnicodeString, CountsFromOne)
{
    ZORListValZORUnicodeString directories;
    directories.Append("/usr/share/data");
    directories.Append(ZORUnicodeString("/é"));
    std::string walked;
    for (int i = 1; i <= directories.Size(); ++i)
        walked += directories[i].ConvertToChar();
    EXPECT_EQ(walked, "/usr/share/data/é");
}

TEST(ZORListValZORUnicodeString, IsEmptyWhenMade)
{
    EXPECT_EQ(ZORListValZORUnicodeString().Size(), 0);
    for (const int capacity : {0, 10, -1, INT_MIN, INT_MAX}) {
        const ZORListValZORUnicodeString list(capacity);
        EXPECT_EQ(list.Size(), 0) << capacity;
        EXPECT_TRUE(list.begin() == list.end());
    }
}

TEST(ZORListValZORUnicodeString, SetsRoomAsideForItsCapacity)
{
    const CountedAllocations allocations;
    ZORListValZORUnicodeString list(100);
    for (int i = 0; i < 100; ++i)
        list.Append("short");
    EXPECT_EQ(allocations.Count(), 1);
    list.RemoveAll();
    for (int i = 0; i < 100; ++i)
        list.Append("short");
    EXPECT_EQ(allocations.Count(), 1);
    EXPECT_EQ(list.Size(), 100);
}

TEST(ZORListValZORUnicodeString, GrowsBeyondItsCapacity)
{
    ZORListValZORUnicodeString list(2);
    for (int i = 1; i <= 10000; ++i)
        list.Append(std::to_string(i).c_str());
    EXPECT_EQ(list.Size(), 10000);
    for (int i = 1; i <= 10000; ++i)
        ASSERT_EQ(list[i], std::to_string(i).c_str());
}

TEST(ZORListValZORUnicodeString, TakesAndGivesElementsByIndex)
{
    ZORListValZORUnicodeString list = ListOf({"a", "b", "c"});
    EXPECT_EQ(list[1], "a");
    EXPECT_EQ(list[3], "c");
    list[2] = "é";
    EXPECT_THAT(list, ElementsAre("a", "é", "c"));
    const ZORListValZORUnicodeString& constant = list;
    EXPECT_EQ(&constant[2], &list[2]);
    static_assert(std::is_same_v<decltype(constant[1]), const ZORUnicodeString&>);
}

TEST(ZORListValZORUnicodeString, RaisesAnErrorForAnIndexOutOfRange)
{
    ZORListValZORUnicodeString three = ListOf({"a", "b", "c"});
    const ZORListValZORUnicodeString& constant = three;
    EXPECT_EQ(ErrorOf(three, 5),
              "list index 5 is out of range: the list has 3 elements, counted from 1");
    EXPECT_EQ(ErrorOf(constant, 4),
              "list index 4 is out of range: the list has 3 elements, counted from 1");
    for (const int index : {0, -1, INT_MIN, INT_MAX}) {
        const std::string start = "list index " + std::to_string(index) + " is out of range";
        EXPECT_THAT(ErrorOf(three, index), testing::StartsWith(start));
        EXPECT_THAT(ErrorOf(constant, index), testing::StartsWith(start));
    }
    for (const int index : {1, 2, 3})
        EXPECT_EQ(ErrorOf(three, index), "");
    const ZORListValZORUnicodeString one = ListOf({"a"});
    EXPECT_EQ(ErrorOf(one, 2),
              "list index 2 is out of range: the list has 1 element, counted from 1");
    const ZORListValZORUnicodeString none;
    EXPECT_EQ(ErrorOf(none, 1),
              "list index 1 is out of range: the list has 0 elements, counted from 1");
    EXPECT_THAT(three, ElementsAre("a", "b", "c"));
}

TEST(ZORListValZORUnicodeString, AppendsCopies)
{
    ZORUnicodeString text(kLong);
    ZORListValZORUnicodeString list;
    list.Append(text);
    text = "other";
    list.Append(text);
    EXPECT_THAT(list, ElementsAre(kLong.c_str(), "other"));
}

TEST(ZORListValZORUnicodeString, AppendsByMovingWhatIsGivenAway)
{
    ZORUnicodeString text(kLong);
    const char* bytes = text.ConvertToChar();
    ZORListValZORUnicodeString list(1);
    list.Append(std::move(text));
    EXPECT_EQ(list[1].ConvertToChar(), bytes);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(ZORListValZORUnicodeString, AppendsItsOwnElements)
{
    ZORListValZORUnicodeString list;
    list.Append(ZORUnicodeString(kLong));
    for (int i = 0; i < 20; ++i) // over several growths
        list.Append(list[1]);
    EXPECT_EQ(list.Size(), 21);
    for (const ZORUnicodeString& text : list)
        EXPECT_EQ(text, kLong.c_str());
}

TEST(ZORListValZORUnicodeString, AppendsAllElementsOfAList)
{
    ZORListValZORUnicodeString list = ListOf({"a"});
    list.Append(ListOf({"b", "c"}));
    EXPECT_THAT(list, ElementsAre("a", "b", "c"));
    list.Append(ZORListValZORUnicodeString(1000000000));
    EXPECT_THAT(list, ElementsAre("a", "b", "c"));
    list.Append(list);
    EXPECT_THAT(list, ElementsAre("a", "b", "c", "a", "b", "c"));
}

TEST(ZORListValZORUnicodeString, RemovesAllElements)
{
    ZORListValZORUnicodeString list = ListOf({"a", "b"});
    list.RemoveAll();
    EXPECT_EQ(list.Size(), 0);
    list.RemoveAll();
    list.Append("c");
    EXPECT_THAT(list, ElementsAre("c"));
}

TEST(ZORListValZORUnicodeString, IsWalkedByARangeLoop)
{
    ZORListValZORUnicodeString list = ListOf({"a", "b"});
    for (ZORUnicodeString& text : list)
        text.Append("!");
    std::string walked;
    const ZORListValZORUnicodeString& constant = list;
    for (const ZORUnicodeString& text : constant)
        walked += text.ConvertToChar();
    EXPECT_EQ(walked, "a!b!");
    EXPECT_EQ(constant.end() - constant.begin(), 2);
    EXPECT_EQ(&*list.begin(), &list[1]);
}

TEST(ZORListValZORUnicodeString, ComparesElementsInOrder)
{
    const ZORListValZORUnicodeString list = ListOf({"a", "b"});
    EXPECT_TRUE(list == ListOf({"a", "b"}));
    EXPECT_FALSE(list != ListOf({"a", "b"}));
    for (const auto& other :
         {ListOf({"b", "a"}), ListOf({"a"}), ListOf({"a", "b", ""}), ListOf({})}) {
        EXPECT_FALSE(list == other);
        EXPECT_TRUE(list != other);
    }
    EXPECT_TRUE(ListOf({}) == ZORListValZORUnicodeString(5));
}

TEST(ZORListValZORUnicodeString, CopiesAreIndependentAndMovesLeaveTheSourceEmpty)
{
    static_assert(std::is_nothrow_move_constructible_v<ZORListValZORUnicodeString>);
    static_assert(std::is_nothrow_move_assignable_v<ZORListValZORUnicodeString>);
    ZORListValZORUnicodeString list = ListOf({"a", "b"});
    const ZORListValZORUnicodeString copy = list;
    list[1] = "x";
    EXPECT_THAT(copy, ElementsAre("a", "b"));
    const ZORListValZORUnicodeString moved = std::move(list);
    EXPECT_THAT(moved, ElementsAre("x", "b"));
    EXPECT_EQ(list.Size(), 0);
}

TEST(ZORListValZORUnicodeString, StaysAsItWasWhenMemoryRunsOut)
{
    ZORListValZORUnicodeString list = ListOf({"a", "b"});
    const ZORUnicodeString lengthy(kLong);
    const ZORListValZORUnicodeString many = [] {
        ZORListValZORUnicodeString made;
        for (int i = 0; i < 100; ++i)
            made.Append("short");
        return made;
    }();
    {
        const ScopedMemoryShortage shortage;
        EXPECT_THROW(list.Append(lengthy), std::bad_alloc);
        EXPECT_THROW(list.Append("full"), std::bad_alloc);
        EXPECT_THROW(list.Append(many), std::bad_alloc);
        EXPECT_THROW(ZORListValZORUnicodeString(10), std::bad_alloc);
        EXPECT_THROW((void)list[3], std::bad_alloc);
    }
    EXPECT_THAT(list, ElementsAre("a", "b"));
}
