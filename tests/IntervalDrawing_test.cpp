#include "IntervalDrawing.h"

#include <gmock/gmock.h>

#include <climits>
#include <random>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Pieces = std::vector<DrawnInterval>;

namespace
{

constexpr auto kOpen = std::nullopt;

std::vector<std::string> Lines(const std::string& iPicture)
{
    std::vector<std::string> lines;
    std::istringstream stream(iPicture);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

TEST(IntervalDrawing, ShowsBothIntervalsAndThePiecesOnAScale)
{
    EXPECT_EQ(DrawIntervals({1, 10}, {3, 5}, PiecesOf(2, {1, 2, 6, 10})),
              "        1   2   3       5   6               10\n"
              "        +---+---+-------+---+---------------+\n"
              "first   [===================================]           1:10\n"
              "second          [=======]                               3:5\n"
              "piece   [===]                                           1:2\n"
              "piece                       [===============]           6:10\n");
}

TEST(IntervalDrawing, DrawsWhatIsOpenBeyondTheScale)
{
    EXPECT_EQ(DrawIntervals({1, 5}, {3, kOpen}, PiecesOf(6, {6, 1, 2})),
              "        1   2   3       5   6\n"
              "        +---+---+-------+---+\n"
              "first   [===============]                               1:5\n"
              "second          [=====================================> 3 and up\n"
              "piece                       [=========================> 6 and up\n"
              "piece   [===]                                           1:2\n");
}

TEST(IntervalDrawing, DrawsWhatEndsBeforeItsStartWithDots)
{
    EXPECT_EQ(DrawIntervals({3, 8}, {1, 5}, PiecesOf(4, {1, 2, 6, 3})),
              "        1   2   3       5   6       8\n"
              "        +---+---+-------+---+-------+\n"
              "first           [===================]                   3:8\n"
              "second  [===============]                               1:5\n"
              "piece   [===]                                           1:2\n"
              "piece           ]...........[                           6:3\n");
}

TEST(IntervalDrawing, DrawsASingleValueAsABar)
{
    EXPECT_EQ(DrawIntervals({5, 5}, {5, 6}, {}),
              "        5   6\n"
              "        +---+\n"
              "first   |                                               5:5\n"
              "second  [===]                                           5:6\n");
    EXPECT_EQ(DrawIntervals({5, 5}, {5, 5}, {}),
              "        5\n"
              "        +\n"
              "first   |                                               5:5\n"
              "second  |                                               5:5\n");
}

TEST(IntervalDrawing, DrawsTwoOpenIntervalsWithTheSameStart)
{
    EXPECT_EQ(DrawIntervals({7, kOpen}, {7, kOpen}, {}),
              "        7\n"
              "        +\n"
              "first   [=============================================> 7 and up\n"
              "second  [=============================================> 7 and up\n");
}

TEST(IntervalDrawing, DrawsLargeDistancesInProportionAndTheNumbersThatHavePlace)
{
    EXPECT_EQ(DrawIntervals({100, 200}, {130, kOpen}, PiecesOf(6, {201, 100, 129})),
              "        100          129                            201\n"
              "        +------------+------------------------------+\n"
              "first   [===========================================]   100:200\n"
              "second               [================================> 130 and up\n"
              "piece                                               [=> 201 and up\n"
              "piece   [============]                                  100:129\n");
}

TEST(IntervalDrawing, DrawsTheWholeOf32Bits)
{
    EXPECT_EQ(DrawIntervals({INT_MIN, INT_MAX}, {5, 1000}, {}),
              "        -2147483648           5              2147483647\n"
              "        +---------------------+---------------------+\n"
              "first   [===========================================]   -2147483648:2147483647\n"
              "second                        |                         5:1000\n");
}

TEST(IntervalDrawing, ReadsTheValuesInPairsAndTheLastOfAnOddNumberAsOpen)
{
    EXPECT_THAT(PiecesOf(2, {}), IsEmpty());
    EXPECT_THAT(PiecesOf(2, {1, 2, 6, 10}), ElementsAre(DrawnInterval{1, 2}, DrawnInterval{6, 10}));
    EXPECT_THAT(PiecesOf(7, {6}), ElementsAre(DrawnInterval{6, kOpen}));
    EXPECT_THAT(PiecesOf(5, {1, 2, 6}), ElementsAre(DrawnInterval{1, 2}, DrawnInterval{6, kOpen}));
    EXPECT_THAT(PiecesOf(10, {5, 8, 5, 8}), ElementsAre(DrawnInterval{5, 8}, DrawnInterval{5, 8}));
}

TEST(IntervalDrawing, ReadsTheOpenPieceFirstWhereTheFirstIntervalIsCutByAnOpenOne)
{
    EXPECT_THAT(PiecesOf(6, {}), IsEmpty());
    EXPECT_THAT(PiecesOf(6, {6, 1, 2}), ElementsAre(DrawnInterval{6, kOpen}, DrawnInterval{1, 2}));
}

TEST(IntervalDrawing, ReadsMinusOneAsAnOpenEndOnlyWhereItMarksOne)
{
    EXPECT_THAT(PiecesOf(9, {10, -1}), ElementsAre(DrawnInterval{10, kOpen}));
    EXPECT_THAT(PiecesOf(5, {-5, -1}), ElementsAre(DrawnInterval{-5, -1}));
}

TEST(IntervalDrawing, KeepsEveryLineWithin79ColumnsAndWithoutTrailingBlanks)
{
    constexpr unsigned kSeed = 7;
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    std::mt19937 random(kSeed);
    const auto value = [&] {
        return static_cast<int>(random() >> (random() % 32)) - static_cast<int>(random() % 9);
    };
    const auto interval = [&] {
        DrawnInterval drawn{value(), value()};
        if (random() % 3 == 0)
            drawn.end.reset();
        return drawn;
    };
    for (int i = 0; i < 5000; ++i) {
        const Pieces pieces = {interval(), interval()};
        const std::string picture = DrawIntervals(interval(), interval(), pieces);
        const std::vector<std::string> lines = Lines(picture);
        ASSERT_EQ(lines.size(), 6u) << picture;
        for (const std::string& line : lines) {
            ASSERT_LE(line.size(), 79u) << picture;
            ASSERT_NE(line.back(), ' ') << picture;
        }
    }
    const std::string widest = DrawIntervals({INT_MIN, INT_MIN + 1}, {INT_MIN, INT_MIN}, {});
    EXPECT_THAT(widest, HasSubstr(" -2147483648:-2147483647\n"));
}

// Whoever reads the picture counts on order: a higher value never stands left of a lower one.
TEST(IntervalDrawing, KeepsTheOrderOfValues)
{
    std::mt19937 random(11);
    for (int i = 0; i < 5000; ++i) {
        const int shift = static_cast<int>(random() % 31);
        int low = static_cast<int>(random() >> shift) / 2;
        int high = static_cast<int>(random() >> shift) / 2;
        if (low > high)
            std::swap(low, high);
        const std::string picture = DrawIntervals({low, low}, {high, high}, {{-5, INT_MAX}});
        const std::vector<std::string> lines = Lines(picture);
        ASSERT_LE(lines[2].find('|'), lines[3].find('|')) << picture;
    }
}
