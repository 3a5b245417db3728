#include "CORBAAny.h"

#include "CountedAllocations.h"
#include "HugeText.h"
#include "Sequences.h"
#include "ZORRaisedError.h"

#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

CORBAAny Filled(const std::function<void(CORBAAny&)>& iFill)
{
    CORBAAny any;
    iFill(any);
    return any;
}

template <class Value>
CORBAAny Holding(Value iValue)
{
    CORBAAny any;
    any << iValue;
    return any;
}

CORBAAny HoldingOctets(const std::string& iOctets)
{
    return Holding<const _SEQUENCE_octet&>(Octets(iOctets));
}

std::string Large(char iFill)
{
    return std::string(1000, iFill);
}

// A receiver of each type with something in it, and what an any gave to them.
struct Receivers {
    long number = 4711;
    int shortNumber = 4712;
    double real = 0.5;
    bool truth = true;
    const char* text = "before";
    _SEQUENCE_octet octets = Octets("before");
    _SEQUENCE_CORBAAny anys = Longs({4713});

    // What the any gave, one line for each receiver it was given to.
    std::vector<std::string> Taken(const CORBAAny& iAny)
    {
        std::vector<std::string> taken;
        const std::vector<std::string> before = Contents();
        const bool found[] = {iAny >> number, iAny >> shortNumber, iAny >> real, iAny >> truth,
                              iAny >> text,   iAny >> octets,      iAny >> anys};
        const std::vector<std::string> after = Contents();
        for (std::size_t i = 0; i < after.size(); ++i)
            if (found[i])
                taken.push_back(after[i]);
            else
                EXPECT_EQ(after[i], before[i]) << "changed without success";
        return taken;
    }

private:
    std::vector<std::string> Contents() const
    {
        std::string elements;
        for (const std::string& each : Told(anys))
            elements += ' ' + each;
        return {"long " + std::to_string(number),
                "int " + std::to_string(shortNumber),
                "double " + std::to_string(real),
                truth ? "true" : "false",
                std::string("string ") + text,
                "octets " + Told(octets),
                "anys" + elements};
    }
};

struct Row {
    const char* what;
    std::function<void(CORBAAny&)> fill;
    int type;
    std::vector<std::string> taken;
};

const std::vector<Row>& Rows()
{
    static const std::vector<Row> rows = {
        {"nothing", [](CORBAAny&) {}, 0, {}},
        {"int", [](CORBAAny& o) { o << -7; }, 3, {"long -7", "int -7"}},
        {"long", [](CORBAAny& o) { o << 7L; }, 3, {"long 7", "int 7"}},
        {"double", [](CORBAAny& o) { o << 2.25; }, 7, {"double 2.250000"}},
        {"true", [](CORBAAny& o) { o << true; }, 8, {"true"}},
        {"false", [](CORBAAny& o) { o << false; }, 8, {"false"}},
        {"string", [](CORBAAny& o) { o << "text"; }, 18, {"string text"}},
        {"empty string", [](CORBAAny& o) { o << ""; }, 18, {"string "}},
        {"large string",
         [](CORBAAny& o) { o << Large('s').c_str(); },
         18,
         {"string " + Large('s')}},
        {"octets", [](CORBAAny& o) { o << Octets("id"); }, 19, {"octets id"}},
        {"no octets", [](CORBAAny& o) { o << Octets(""); }, 19, {"octets "}},
        {"many octets", [](CORBAAny& o) { o << Octets(Large('o')); }, 19, {"octets " + Large('o')}},
        {"anys",
         [](CORBAAny& o) {
             o << Identifiers({"p", std::nullopt});
         },
         20,
         {"anys \"p\" 1"}},
        {"no anys", [](CORBAAny& o) { o << Longs({}); }, 20, {"anys"}},
    };
    return rows;
}

} // namespace

TEST(CORBAAny, KeepsAValueOfAnyKind)
{
    CORBAAny bound;
    bound << 12;
    long value = 0;
    EXPECT_TRUE(bound >> value);
    EXPECT_EQ(value, 12);
}

TEST(CORBAAny, TellsItsKindByAFixedNumber)
{
    for (const Row& row : Rows())
        EXPECT_EQ(Filled(row.fill).type(), row.type) << row.what;
}

TEST(CORBAAny, GivesWhatItHoldsAndLeavesReceiversOfOtherTypesAsTheyWere)
{
    for (const Row& row : Rows())
        EXPECT_EQ(Receivers().Taken(Filled(row.fill)), row.taken) << row.what;
}

TEST(CORBAAny, TakesAnyKindAfterAnyOther)
{
    for (const Row& before : Rows())
        for (const Row& after : Rows()) {
            CORBAAny any = Filled(before.fill);
            const bool sets = after.type != CORBAAny::kEmpty;
            after.fill(any);
            const Row& held = sets ? after : before;
            EXPECT_EQ(any.type(), held.type) << before.what << ", then " << after.what;
            EXPECT_EQ(Receivers().Taken(any), held.taken) << before.what << ", then " << after.what;
        }
}

TEST(CORBAAny, CopiesAreIndependentOfEachOther)
{
    for (const Row& row : Rows()) {
        CORBAAny source = Filled(row.fill);
        const CORBAAny copy(source);
        source << "changed";
        EXPECT_EQ(copy.type(), row.type) << row.what;
        EXPECT_EQ(Receivers().Taken(copy), row.taken) << row.what;
    }
}

TEST(CORBAAny, AssignsAnyKindOverAnyOther)
{
    for (const Row& from : Rows())
        for (const Row& to : Rows()) {
            const CORBAAny source = Filled(from.fill);
            CORBAAny target = Filled(to.fill);
            target = source;
            EXPECT_EQ(Receivers().Taken(target), from.taken) << from.what << " over " << to.what;
            EXPECT_EQ(Receivers().Taken(source), from.taken) << from.what << " over " << to.what;
        }
}

TEST(CORBAAny, MovesAndLeavesTheSourceEmpty)
{
    for (const Row& row : Rows()) {
        CORBAAny source = Filled(row.fill);
        CORBAAny moved(std::move(source));
        EXPECT_EQ(source.type(), 0) << row.what;
        CORBAAny target = HoldingOctets(Large('t'));
        target = std::move(moved);
        EXPECT_EQ(moved.type(), 0) << row.what;
        EXPECT_EQ(Receivers().Taken(target), row.taken) << row.what;
    }
}

TEST(CORBAAny, AssignedToItselfIsAsItWas)
{
    for (const Row& row : Rows()) {
        CORBAAny any = Filled(row.fill);
        CORBAAny& same = any;
        any = same;
        any = std::move(same);
        EXPECT_EQ(Receivers().Taken(any), row.taken) << row.what;
    }
}

TEST(CORBAAny, HoldsEveryLongOf32Bits)
{
    for (const long value : {0L, -1L, 1L, long{INT_MAX}, long{INT_MIN}}) {
        const CORBAAny any = Holding(value);
        long number = 99;
        int shortNumber = 99;
        EXPECT_TRUE(any >> number);
        EXPECT_TRUE(any >> shortNumber);
        EXPECT_EQ(number, value);
        EXPECT_EQ(shortNumber, value);
    }
}

TEST(CORBAAny, RefusesALongBeyond32BitsAndIsAsItWas)
{
    for (const long value : {INT_MAX + 1L, INT_MIN - 1L, LONG_MAX, LONG_MIN}) {
        CORBAAny any = HoldingOctets(Large('b'));
        try {
            any << value;
            FAIL() << value;
        } catch (const ZORRaisedError& raised) {
            EXPECT_STREQ(raised.Error().IsA(), "ZORInternalError");
            EXPECT_THAT(raised.Error().GetMessage(0).ConvertToChar(),
                        HasSubstr(std::to_string(value)));
        }
        EXPECT_EQ(Told(any), '"' + Large('b') + '"');
    }
}

TEST(CORBAAny, RefusesATextWhoseLengthHasNo32BitsAndIsAsItWas)
{
    const HugeText huge;
    CORBAAny any = HoldingOctets(Large('b'));
    try {
        any << huge;
        FAIL() << "it was taken";
    } catch (const ZORRaisedError& raised) {
        EXPECT_STREQ(raised.Error().IsA(), "ZORInternalError");
        EXPECT_THAT(raised.Error().GetMessage(0).ConvertToChar(), HasSubstr("3000000000"));
    }
    EXPECT_EQ(Told(any), '"' + Large('b') + '"');
}

TEST(CORBAAny, HoldsEveryDouble)
{
    for (const double value : {0.0, -0.0, 1e308, -5e-324, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        double real = 99;
        EXPECT_TRUE(Holding(value) >> real);
        EXPECT_EQ(std::signbit(real), std::signbit(value));
        EXPECT_TRUE(real == value || (std::isnan(real) && std::isnan(value)));
    }
}

TEST(CORBAAny, TakesNullForTheEmptyString)
{
    const CORBAAny any = Holding<const char*>(nullptr);
    const char* text = "before";
    EXPECT_TRUE(any >> text);
    EXPECT_STREQ(text, "");
}

namespace
{

// That many characters, no two alike.
std::string Counted(std::size_t iCount)
{
    std::string text;
    for (std::size_t i = 0; i < iCount; ++i)
        text += static_cast<char>(i + 1);
    return text;
}

} // namespace

TEST(CORBAAny, TakesItsOwnText)
{
    for (const std::string& before :
         {std::string("short"), Large('l'), Counted(20), Counted(30), Counted(39), Counted(45)}) {
        CORBAAny any = Holding(before.c_str());
        const char* text = nullptr;
        ASSERT_TRUE(any >> text);
        any << text + 2;
        ASSERT_TRUE(any >> text);
        EXPECT_EQ(text, before.substr(2));
    }
}

TEST(CORBAAny, HoldsOctetsAndStringsOfEveryLengthAroundItsOwnRoom)
{
    for (std::size_t count = 0; count < 100; ++count) {
        const std::string expected = Counted(count);
        _SEQUENCE_octet octets;
        EXPECT_TRUE(HoldingOctets(expected) >> octets);
        EXPECT_EQ(Told(octets), expected);
        const CORBAAny any = Holding(expected.c_str());
        const CORBAAny copy = any;
        const char* text = nullptr;
        EXPECT_TRUE(copy >> text);
        EXPECT_EQ(text, expected);
    }
}

TEST(CORBAAny, HoldsOctetsOfAllValues)
{
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    for (const std::string& expected : {all, all.substr(0, 40), all.substr(216)}) {
        _SEQUENCE_octet octets;
        EXPECT_TRUE(HoldingOctets(expected) >> octets);
        EXPECT_EQ(Told(octets), expected);
    }
}

TEST(CORBAAny, StoresTheElementsInUseAndNoMoreThanThereIsRoomFor)
{
    _SEQUENCE_octet octets = Octets("abcdef");
    octets.length(2);
    _SEQUENCE_octet taken;
    Holding<const _SEQUENCE_octet&>(octets) >> taken;
    EXPECT_EQ(Told(taken), "ab");

    octets.length(9); // a breach, which must not spread
    Holding<const _SEQUENCE_octet&>(octets) >> taken;
    octets.length(6);
    EXPECT_EQ(Told(taken), "abcdef");
}

TEST(CORBAAny, MakesRoomInTheReceiverOnlyWhereItIsTooSmall)
{
    const CORBAAny any = HoldingOctets("abcd");
    _SEQUENCE_octet small = Octets("xy");
    _SEQUENCE_octet large = Octets("uvwxyz");
    const unsigned char* const before = large.buffer();
    EXPECT_TRUE(any >> small);
    EXPECT_TRUE(any >> large);
    EXPECT_EQ(small.maximum(), 4);
    EXPECT_EQ(large.maximum(), 6);
    EXPECT_EQ(large.buffer(), before);
    EXPECT_EQ(Told(small), "abcd");
    EXPECT_EQ(Told(large), "abcd");
}

TEST(CORBAAny, GivesItsAnysToAReceiverThatHoldsIt)
{
    for (const int count : {0, 1, 3, 10}) {
        std::vector<int> values(static_cast<std::size_t>(count), 5);
        _SEQUENCE_CORBAAny list = Longs({1, 2, 3});
        list[1] << Longs(values);
        EXPECT_TRUE(list[1] >> list);
        EXPECT_EQ(Told(list), std::vector<std::string>(values.size(), "5"));
    }
}

TEST(CORBAAny, TakesTheListThatHoldsIt)
{
    _SEQUENCE_CORBAAny list = Identifiers({"p", "q"});
    list[0] << list;
    _SEQUENCE_CORBAAny inner;
    EXPECT_TRUE(list[0] >> inner);
    EXPECT_THAT(Told(inner), ElementsAre("\"p\"", "\"q\""));
}

TEST(CORBAAny, CopiesNestedSequencesWithAllTheyHold)
{
    CORBAAny deep = HoldingOctets(Large('d'));
    for (int level = 0; level < 10; ++level) {
        _SEQUENCE_CORBAAny list = Longs({level, 0});
        list[1] = deep;
        deep << list;
    }
    CORBAAny copy = deep;
    deep << 0;
    for (int level = 9; level >= 0; --level) {
        _SEQUENCE_CORBAAny list;
        ASSERT_TRUE(copy >> list);
        EXPECT_EQ(Told(list[0]), std::to_string(level));
        copy = CORBAAny(list[1]);
    }
    EXPECT_EQ(Told(copy), '"' + Large('d') + '"');
}

TEST(CORBAAny, ShowsItsOctetsWithoutACopy)
{
    for (const std::string& expected : {std::string(), std::string("id"), Large('p')}) {
        const CORBAAny any = HoldingOctets(expected);
        int count = -1;
        const unsigned char* const octets = any.PeekOctets(count);
        ASSERT_NE(octets, nullptr) << "also when there are none";
        EXPECT_EQ(
            std::string(reinterpret_cast<const char*>(octets), static_cast<std::size_t>(count)),
            expected);
    }
    for (const Row& row : Rows()) {
        int count = -1;
        const CORBAAny any = Filled(row.fill);
        const bool shown = any.PeekOctets(count) != nullptr;
        EXPECT_EQ(shown, row.type == CORBAAny::kOctets) << row.what;
        EXPECT_TRUE(shown || count == 0) << row.what;
    }
}

TEST(CORBAAny, KeepsUpTo40OctetsWithoutAnAllocation)
{
    for (const std::size_t count :
         {std::size_t{0}, std::size_t{16}, std::size_t{36}, std::size_t{40}}) {
        const _SEQUENCE_octet source = Octets(std::string(count, 'i'));
        _SEQUENCE_octet receiver = source;
        const CountedAllocations allocations;
        {
            CORBAAny any;
            any << source;
            CORBAAny copy = any;
            any = copy;
            copy = std::move(any);
            copy >> receiver;
        }
        EXPECT_EQ(allocations.Count(), 0) << count;
    }
}

TEST(CORBAAny, KeepsPlainValuesAndShortStringsWithoutAnAllocation)
{
    const std::string text(39, 't');
    const CountedAllocations allocations;
    {
        CORBAAny any;
        any << 1;
        any << 1L;
        any << 1.5;
        any << true;
        any << text.c_str();
        const CORBAAny copy = any;
    }
    EXPECT_EQ(allocations.Count(), 0);
}

TEST(CORBAAny, AllocatesNothingForAnExtractionIntoEnoughRoom)
{
    const CORBAAny any = HoldingOctets(Large('r'));
    _SEQUENCE_octet receiver = Octets(Large('q'));
    const CountedAllocations allocations;
    any >> receiver;
    EXPECT_EQ(allocations.Count(), 0);
}

TEST(CORBAAny, IsAsItWasWhenThereIsNoMemory)
{
    const _SEQUENCE_octet octets = Octets(Large('n'));
    const std::string text = Large('n');
    const _SEQUENCE_CORBAAny anys = Identifiers({Large('1'), Large('2'), Large('3')});
    const CORBAAny large = HoldingOctets(Large('n'));
    const CORBAAny list = Holding<const _SEQUENCE_CORBAAny&>(anys);
    for (const Row& row : Rows()) {
        CORBAAny any = Filled(row.fill);
        const auto fails = [&](long iAfter, auto iStore) {
            const ScopedMemoryShortage shortage(iAfter);
            EXPECT_THROW(iStore(), std::bad_alloc) << row.what;
        };
        fails(0, [&] { any << octets; });
        fails(0, [&] { any << text.c_str(); });
        fails(0, [&] { any = large; });
        for (long few = 0; few < 4; ++few) {
            fails(few, [&] { any << anys; });
            fails(few, [&] { any = list; });
        }
        EXPECT_EQ(Receivers().Taken(any), row.taken) << row.what;
    }
}

TEST(CORBAAny, TakesNoPointerForABoolean)
{
    static_assert(!std::is_invocable_v<decltype([](auto& o, auto i) -> decltype(o << i) {}),
                                       CORBAAny&, int*>);
    static_assert(!std::is_invocable_v<decltype([](auto& o, auto i) -> decltype(o << i) {}),
                                       CORBAAny&, unsigned>);
    CORBAAny any;
    char text[] = "characters";
    any << text;
    EXPECT_EQ(any.type(), CORBAAny::kString);
    any << static_cast<short>(3);
    EXPECT_EQ(any.type(), CORBAAny::kLong);
}
