#include "ZORConfigServices.h"

#include "IntervalModel.h"
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

namespace
{

void Compare(IntervalPairs& ioPairs, int a0, int a1, int b0, int b1, int iStep)
{
    ASSERT_EQ(ioPairs.Told(a0, a1, b0, b1, iStep),
              plain::Interval(a0, IntervalPairs::End(a1), b0, IntervalPairs::End(b1), iStep))
        << a0 << ':' << a1 << " and " << b0 << ':' << b1 << ", step " << iStep;
}

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
                        Compare(pairs, a0, a1, b0, b1, step);
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
        Compare(pairs, a0, a1, b0, b1, next());
        if (HasFatalFailure())
            return;
    }
}
