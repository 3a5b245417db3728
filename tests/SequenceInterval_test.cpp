#include "ZORConfigServices.h"

#include "Sequences.h"

#include <gmock/gmock.h>

#include <climits>
#include <random>

namespace
{

using testing::ElementsAre;
using Values = std::vector<int>;

// The code, a colon and the values, or "untouched".
std::string Compared(_SEQUENCE_CORBAAny iFirst, _SEQUENCE_CORBAAny iSecond, int iStep)
{
    _SEQUENCE_CORBAAny result = Longs({70, 71, 72, 73, 74});
    std::string told = std::to_string(SequenceInterval(iFirst, iSecond, result, iStep)) + ':';
    if (result.length() == 5)
        return told + " untouched";
    for (const std::string& each : Told(result))
        told += ' ' + each;
    return told;
}

std::string Compared(const Values& iFirst, const Values& iSecond, int iStep = 1)
{
    return Compared(Longs(iFirst), Longs(iSecond), iStep);
}

} // namespace

TEST(SequenceInterval, TellsHowTwoIntervalsLieAndWhatIsNotCommonToThem)
{
    _SEQUENCE_CORBAAny first = Longs({1, 10});
    _SEQUENCE_CORBAAny second = Longs({3, 5});
    _SEQUENCE_CORBAAny result;
    EXPECT_EQ(SequenceInterval(first, second, result, 1), 2);
    EXPECT_THAT(Told(result), ElementsAre("1", "2", "6", "10"));
}

TEST(SequenceInterval, FollowsItsTable)
{
    const struct {
        Values first, second;
        int step;
        const char* expected;
    } rows[] = {
        // Both open.
        {{10}, {10}, 1, "1:"},
        {{10}, {5}, 1, "5: 5 9"},
        {{5}, {10}, 1, "13: 5 9"},
        {{100}, {50}, 10, "5: 50 90"},
        // The first open.
        {{12}, {5, 9}, 1, "0:"},
        {{5}, {5, 9}, 1, "9: 10 -1"},
        {{9}, {5, 9}, 1, "10: 5 8 5 8"},
        {{7}, {5, 9}, 1, "12: 5 6 5 6"},
        {{3}, {5, 9}, 1, "11: 3 4 3 4"},
        {{5}, {5, 5}, 1, "9: 6 -1"},
        {{7}, {9, 8}, 1, "11: 7 8 7 8"},
        // The second open.
        {{1, 5}, {7}, 1, "0:"},
        {{1, 5}, {3}, 1, "6: 6 1 2"},
        {{1, 5}, {5}, 1, "7: 6"},
        {{1, 5}, {1}, 1, "5: 6"},
        {{5, 5}, {5}, 1, "5: 6"},
        {{3, 5}, {1}, 1, "5: 1 2 6"},
        {{5, 3}, {5}, 1, "0:"},
        {{9, 5}, {3}, 1, "5: 3 8 6"},
        // Both bounded.
        {{1, 5}, {7, 9}, 1, "0:"},
        {{7, 9}, {1, 5}, 1, "0:"},
        {{10, 20}, {10, 20}, 1, "1:"},
        {{1, 10}, {3, 5}, 1, "2: 1 2 6 10"},
        {{1, 10}, {1, 5}, 1, "2: 6 10"},
        {{1, 10}, {5, 10}, 1, "2: 1 4"},
        {{1, 5}, {3, 8}, 1, "3: 6 8 1 2"},
        {{3, 8}, {1, 5}, 1, "4: 1 2 6 3"},
        {{3, 5}, {1, 10}, 1, "5: 1 2 6 10"},
        {{1, 5}, {1, 10}, 1, "5: 6 10"},
        {{5, 10}, {1, 10}, 1, "5: 1 4"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Compared(row.first, row.second, row.step), row.expected)
            << testing::PrintToString(row.first) << testing::PrintToString(row.second);
}

TEST(SequenceInterval, TakesAnEndOfMinusOneForAnOpenOne)
{
    EXPECT_EQ(Compared({10, -1}, {5}), "5: 5 9");
    EXPECT_EQ(Compared({1, 5}, {3, -1}), "6: 6 1 2");
}

TEST(SequenceInterval, LeavesOutThePieceWhoseComputedBoundIsMinusOne)
{
    EXPECT_EQ(Compared({-5, 9}, {0, 5}), "2: 6 9");
    EXPECT_EQ(Compared({-9, 9}, {-5, -2}), "2: -9 -6");
    EXPECT_EQ(Compared({0, 5}, {-5, 9}), "5: 6 9");
    EXPECT_EQ(Compared({-9, 0}, {-9, -2}), "2: untouched");
    EXPECT_EQ(Compared({-9, -2}, {-9, 0}), "5: untouched");
    EXPECT_EQ(Compared({0, 5}, {-9, 5}), "5: untouched");
    EXPECT_EQ(Compared({0}, {-5}), "5: -5 -1") << "only there";
}

TEST(SequenceInterval, ReadsOnlyTheLongsOfTheFirstTwoElements)
{
    const _SEQUENCE_CORBAAny second = Longs({5, 9});
    _SEQUENCE_CORBAAny first = Identifiers({"p", "q"});
    EXPECT_EQ(Compared(first, second, 1), Compared({-1}, {5, 9})) << "neither is a long";
    first[0] << 5;
    EXPECT_EQ(Compared(first, second, 1), "9: 10 -1") << "the end is not a long";
    first[1] << 9.0;
    EXPECT_EQ(Compared(first, second, 1), "9: 10 -1") << "nor is a number of another kind";
    EXPECT_EQ(Compared({}, {5, 9}), Compared({-1}, {5, 9})) << "nothing is there";
    EXPECT_EQ(Compared({1, 10, 2, 3}, {3, 5, 4, 4, 4}), "2: 1 2 6 10") << "more is there";
}

TEST(SequenceInterval, WrapsIn32Bits)
{
    EXPECT_EQ(Compared({INT_MIN}, {INT_MIN, INT_MAX}), "9: " + std::to_string(INT_MIN) + " -1");
    EXPECT_EQ(Compared({5}, {INT_MIN}, INT_MIN),
              "5: " + std::to_string(INT_MIN) + ' ' + std::to_string(INT_MIN + 5));
    EXPECT_EQ(Compared({INT_MIN, 9}, {7, INT_MAX}, INT_MAX),
              "3: " + std::to_string(INT_MIN + 8) + ' ' + std::to_string(INT_MAX) + ' ' +
                  std::to_string(INT_MIN) + ' ' + std::to_string(7 - INT_MAX));
}

TEST(SequenceInterval, GivesTheResultTheRoomOfTheLargerOfItsOldLengthAndTheNewOne)
{
    struct {
        int length, spare;
        Values first, second;
        int expectedLength, expectedRoom;
    } const rows[] = {
        {0, 0, {1, 10}, {3, 5}, 4, 4}, {0, 9, {1, 10}, {3, 5}, 4, 4}, {3, 0, {1, 10}, {3, 5}, 4, 4},
        {6, 0, {1, 10}, {3, 5}, 4, 6}, {6, 5, {1, 10}, {3, 5}, 4, 6}, {6, 5, {1, 5}, {1}, 1, 6},
        {0, 5, {10}, {10}, 0, 0},      {6, 0, {10}, {10}, 0, 6},      {6, 4, {10}, {10}, 0, 6},
    };
    for (const auto& row : rows) {
        _SEQUENCE_CORBAAny first = Longs(row.first);
        _SEQUENCE_CORBAAny second = Longs(row.second);
        _SEQUENCE_CORBAAny result = Longs(Values(static_cast<std::size_t>(row.length), 7));
        result.maximum(row.length + row.spare);
        SequenceInterval(first, second, result, 1);
        EXPECT_EQ(result.length(), row.expectedLength);
        EXPECT_EQ(result.maximum(), row.expectedRoom);
        if (row.length > row.expectedLength) {
            result.length(row.length);
            EXPECT_EQ(Told(result[row.length - 1]), "7") << "what fell out of use stays";
        }
    }
}

TEST(SequenceInterval, LeavesAnUntouchedResultWithItsRoom)
{
    _SEQUENCE_CORBAAny first = Longs({-9, 0});
    _SEQUENCE_CORBAAny second = Longs({-9, -2});
    _SEQUENCE_CORBAAny result = Identifiers({"p", std::nullopt}, 3);
    EXPECT_EQ(SequenceInterval(first, second, result, 1), 2);
    EXPECT_THAT(Told(result), ElementsAre("\"p\"", "1"));
    EXPECT_EQ(result.maximum(), 5);
}

TEST(SequenceInterval, WritesOverElementsOfEveryKind)
{
    _SEQUENCE_CORBAAny first = Longs({1, 10});
    _SEQUENCE_CORBAAny second = Longs({3, 5});
    _SEQUENCE_CORBAAny result = Identifiers({std::string(100, 'p'), "q"});
    result[1] << first;
    SequenceInterval(first, second, result, 1);
    EXPECT_THAT(Told(result), ElementsAre("1", "2", "6", "10"));
}

TEST(SequenceInterval, MayWriteItsResultOverAnInterval)
{
    _SEQUENCE_CORBAAny first = Longs({1, 10});
    _SEQUENCE_CORBAAny second = Longs({3, 5});
    EXPECT_EQ(SequenceInterval(first, second, first, 1), 2);
    EXPECT_THAT(Told(first), ElementsAre("1", "2", "6", "10"));
    first = Longs({3, 8});
    second = Longs({1, 5});
    EXPECT_EQ(SequenceInterval(first, second, second, 1), 4);
    EXPECT_THAT(Told(second), ElementsAre("1", "2", "6", "3"));
    EXPECT_EQ(SequenceInterval(second, second, second, 1), 1);
    EXPECT_EQ(second.length(), 0);
    EXPECT_EQ(second.maximum(), 4);
}

TEST(SequenceInterval, LeavesTheIntervalsAlone)
{
    _SEQUENCE_CORBAAny first = Longs({1, 10});
    _SEQUENCE_CORBAAny second = Longs({3});
    _SEQUENCE_CORBAAny result;
    SequenceInterval(first, second, result, 1);
    EXPECT_THAT(Told(first), ElementsAre("1", "10"));
    EXPECT_THAT(Told(second), ElementsAre("3"));
}

// A second opinion, written without a table.
namespace
{

int Wrapped(std::int64_t iValue)
{
    return static_cast<int>(static_cast<std::uint32_t>(iValue & 0xffffffff));
}

std::string Told(int iCode, const std::vector<std::int64_t>& iValues)
{
    std::string told = std::to_string(iCode) + ':';
    for (const std::int64_t value : iValues)
        told += ' ' + std::to_string(Wrapped(value));
    return told;
}

std::string RestsOf(int iCode, const std::vector<std::int64_t>& iLower,
                    const std::vector<std::int64_t>& iUpper)
{
    std::vector<std::int64_t> values = iLower;
    values.insert(values.end(), iUpper.begin(), iUpper.end());
    return values.empty() ? std::to_string(iCode) + ": untouched" : Told(iCode, values);
}

std::string BothBounded(std::int64_t a0, std::int64_t a1, std::int64_t b0, std::int64_t b1,
                        std::int64_t s)
{
    if (a1 < b0 || b1 < a0)
        return Told(0, {});
    if (a0 == b0 && a1 == b1)
        return Told(1, {});
    if (a0 <= b0 && b1 <= a1) {
        const bool lower = a0 != b0 && Wrapped(b0 - s) != -1;
        const bool upper = a1 != b1 && Wrapped(b1 + s) != -1;
        return RestsOf(2, lower ? std::vector{a0, b0 - s} : std::vector<std::int64_t>(),
                       upper ? std::vector{b1 + s, a1} : std::vector<std::int64_t>());
    }
    if (a0 < b0 && a1 < b1)
        return Told(3, {a1 + s, b1, a0, b0 - s});
    if (b0 < a0 && b1 < a1)
        return Told(4, {b0, a0 - s, b1 + s, a0});
    const bool lower = a0 != b0 && Wrapped(a0 - s) != -1;
    const bool upper = a1 != b1 && Wrapped(a1 + s) != -1;
    return RestsOf(5, lower ? std::vector{b0, a0 - s} : std::vector<std::int64_t>(),
                   upper ? std::vector{a1 + s, b1} : std::vector<std::int64_t>());
}

std::string Plain(std::int64_t a0, std::int64_t a1, std::int64_t b0, std::int64_t b1,
                  std::int64_t s)
{
    if (a1 == -1 && b1 == -1) {
        if (b0 < a0)
            return Told(5, {b0, a0 - s});
        return b0 == a0 ? Told(1, {}) : Told(13, {a0, b0 - s});
    }
    if (a1 == -1) {
        if (a0 > b1)
            return Told(0, {});
        if (a0 == b0)
            return Told(9, {b1 + s, -1});
        if (a0 == b1)
            return Told(10, {b0, a0 - s, b0, a0 - s});
        return b0 < a0 ? Told(12, {b0, a0 - s, b0, a0 - s}) : Told(11, {a0, b0 - s, a0, b0 - s});
    }
    if (b1 == -1) {
        if (b0 > a1)
            return Told(0, {});
        if (b0 < a0)
            return Told(5, {b0, a0 - s, a1 + s});
        if (b0 == a0)
            return Told(5, {a1 + s});
        return b0 < a1 ? Told(6, {a1 + s, a0, b0 - s}) : Told(7, {a1 + s});
    }
    return BothBounded(a0, a1, b0, b1, s);
}

// Every result tells the case by its code and its values, so that none is written only now and
// then.
class IntervalPairs
{
public:
    // An end of kMissing is no element at all.
    static constexpr int kMissing = INT_MIN;

    void Compare(int a0, int a1, int b0, int b1, int iStep)
    {
        Fill(_First, a0, a1);
        Fill(_Second, b0, b1);
        _Result.maximum(5);
        _Result.length(5);
        const int code = SequenceInterval(_First, _Second, _Result, iStep);
        ASSERT_NE(code, -1);
        std::string told = std::to_string(code) + ':';
        if (_Result.length() == 5)
            told += " untouched";
        for (int i = 0; i < _Result.length() && _Result.length() < 5; ++i) {
            int value = 0;
            ASSERT_TRUE(_Result[i] >> value);
            told += ' ' + std::to_string(value);
        }
        ASSERT_EQ(told, Plain(a0, End(a1), b0, End(b1), iStep))
            << a0 << ':' << a1 << " and " << b0 << ':' << b1 << ", step " << iStep;
    }

private:
    static int End(int iEnd) { return iEnd == kMissing ? -1 : iEnd; }

    static void Fill(_SEQUENCE_CORBAAny& oInterval, int iStart, int iEnd)
    {
        oInterval.maximum(2);
        oInterval.length(iEnd == kMissing ? 1 : 2);
        oInterval[0] << iStart;
        if (iEnd != kMissing)
            oInterval[1] << iEnd;
    }

    _SEQUENCE_CORBAAny _First, _Second, _Result;
};

} // namespace

TEST(SequenceInterval, AgreesWithAPlainModelForAllBoundsFromMinus3To12)
{
    std::vector<int> ends = {IntervalPairs::kMissing};
    for (int end = -3; end <= 12; ++end)
        ends.push_back(end);
    IntervalPairs pairs;
    for (const int step : {0, 1, 2, 10, -1})
        for (int a0 = -3; a0 <= 12; ++a0)
            for (const int a1 : ends)
                for (int b0 = -3; b0 <= 12; ++b0)
                    for (const int b1 : ends) {
                        pairs.Compare(a0, a1, b0, b1, step);
                        if (HasFatalFailure())
                            return;
                    }
}

TEST(SequenceInterval, AgreesWithAPlainModelForBoundsOf32Bits)
{
    constexpr unsigned kSeed = 20240229;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    const int edges[] = {INT_MIN + 1, INT_MIN + 2, -2, -1, 0, 1, INT_MAX - 1, INT_MAX};
    const auto next = [&] {
        return random() % 3 == 0 ? edges[random() % std::size(edges)] : static_cast<int>(random());
    };
    IntervalPairs pairs;
    for (int i = 0; i < 100000; ++i) {
        const int a0 = next();
        const int b0 = random() % 8 == 0 ? a0 : next();
        const int a1 = random() % 8 == 0 ? b0 : next();
        const int b1 = random() % 8 == 0 ? a1 : next();
        pairs.Compare(a0, a1, b0, b1, next());
        if (HasFatalFailure())
            return;
    }
}
