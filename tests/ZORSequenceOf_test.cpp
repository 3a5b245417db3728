#include "ZORSequenceOf.h"

#include "CountedAllocations.h"
#include "ZORRaisedError.h"
#include "_SEQUENCE_CORBAAny.h"
#include "_SEQUENCE_octet.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;

// Counts its like, and how often they are copied.
struct Counted {
    static inline int alive = 0;
    static inline int copies = 0;

    Counted() { ++alive; }
    explicit Counted(int iValue) : value(iValue) { ++alive; }
    Counted(const Counted& iOther) : value(iOther.value)
    {
        ++alive;
        ++copies;
    }
    Counted& operator=(const Counted& iOther)
    {
        value = iOther.value;
        ++copies;
        return *this;
    }
    Counted& operator=(Counted&& iOther) noexcept
    {
        value = iOther.value;
        iOther.value = -1;
        return *this;
    }
    ~Counted() { --alive; }

    int value = 0;
};

class CountedSequence final : public ZORSequenceOf<Counted>
{
public:
    CountedSequence() = default;
    explicit CountedSequence(const std::vector<int>& iValues)
    {
        maximum(static_cast<long>(iValues.size()));
        length(static_cast<long>(iValues.size()));
        for (std::size_t i = 0; i < iValues.size(); ++i)
            (*this)[static_cast<int>(i)].value = iValues[i];
    }
    CountedSequence(const CountedSequence& iOther) : ZORSequenceOf() { Copy(iOther); }
    CountedSequence(CountedSequence&&) noexcept = default;
    CountedSequence& operator=(const CountedSequence& iOther)
    {
        Copy(iOther);
        return *this;
    }
    CountedSequence& operator=(CountedSequence&&) noexcept = default;

    void Assignation(const void* iSource, int iIndex) override
    {
        ++_Assignations;
        buffer()[iIndex] = static_cast<const Counted*>(iSource)[iIndex];
    }

    // All there is room for.
    std::vector<int> Values() const
    {
        std::vector<int> values;
        for (int i = 0; i < maximum(); ++i)
            values.push_back(buffer()[i].value);
        return values;
    }

    int _Assignations = 0;
};

} // namespace

TEST(ZORSequenceOf, StartsWithoutRoom)
{
    const CountedSequence counted;
    EXPECT_EQ(counted.maximum(), 0);
    EXPECT_EQ(counted.length(), 0);
    EXPECT_EQ(counted.buffer(), nullptr);
}

TEST(ZORSequenceOf, GrowsToExactlyTheRoomAskedFor)
{
    CountedSequence counted({1, 2, 3});
    counted.maximum(7);
    EXPECT_EQ(counted.maximum(), 7);
    EXPECT_EQ(counted.length(), 3);
    EXPECT_THAT(counted.Values(), ElementsAre(1, 2, 3, 0, 0, 0, 0));
    EXPECT_EQ(Counted::alive, 7);
}

TEST(ZORSequenceOf, ShrinksToTheRoomAskedForAndDropsWhatStoodBehindTheLength)
{
    CountedSequence counted({1, 2, 3, 4, 5});
    counted.length(2);
    counted.maximum(3);
    EXPECT_EQ(counted.maximum(), 3);
    EXPECT_THAT(counted.Values(), ElementsAre(1, 2, 0));
    EXPECT_EQ(Counted::alive, 3);
}

TEST(ZORSequenceOf, NeverShrinksBelowItsLength)
{
    CountedSequence counted({1, 2, 3, 4, 5});
    counted.length(2);
    counted.maximum(-4);
    EXPECT_EQ(counted.maximum(), 2);
    EXPECT_THAT(counted.Values(), ElementsAre(1, 2));
}

TEST(ZORSequenceOf, WithoutElementsGivesAllRoomBack)
{
    for (const long room : {0L, -1L, LONG_MIN}) {
        CountedSequence counted({1, 2});
        counted.length(0);
        counted.maximum(room);
        EXPECT_EQ(counted.maximum(), 0);
        EXPECT_EQ(counted.buffer(), nullptr);
        EXPECT_EQ(Counted::alive, 0);
    }
}

TEST(ZORSequenceOf, LeavesElementsWhereTheyAreWhenTheRoomIsRight)
{
    CountedSequence counted({1, 2, 3});
    const Counted* const before = counted.buffer();
    counted.maximum(3);
    counted.maximum(1);
    EXPECT_EQ(counted.buffer(), before);
    counted.length(1);
    counted.maximum(3);
    EXPECT_EQ(counted.buffer(), before);
    EXPECT_THAT(counted.Values(), ElementsAre(1, 2, 3));
}

TEST(ZORSequenceOf, CopiesNoElementWhenTheRoomChanges)
{
    CountedSequence counted({1, 2, 3});
    Counted::copies = 0;
    counted.maximum(9);
    counted.maximum(3);
    EXPECT_EQ(Counted::copies, 0);
}

TEST(ZORSequenceOf, IsAsItWasWhenThereIsNoMemoryForTheRoom)
{
    CountedSequence counted({1, 2, 3});
    {
        const ScopedMemoryShortage shortage;
        EXPECT_THROW(counted.maximum(100), std::bad_alloc);
    }
    EXPECT_THROW(counted.maximum(1L << 40), std::bad_alloc) << "beyond 32 bits";
    EXPECT_EQ(counted.maximum(), 3);
    EXPECT_THAT(counted.Values(), ElementsAre(1, 2, 3));
}

TEST(ZORSequenceOf, OctetsAreZeroUntilTheyAreSet)
{
    _SEQUENCE_octet octets;
    octets.maximum(64);
    octets.length(64);
    for (int i = 0; i < 64; ++i)
        octets[i] = 0xff;
    octets.length(0);
    octets.maximum(0);
    octets.maximum(64);
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(octets.buffer()[i], 0) << i;
}

TEST(ZORSequenceOf, GivesAccessToEveryElementInUse)
{
    CountedSequence counted({10, 20, 30});
    const CountedSequence& fixed = counted;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(&counted[i], counted.buffer() + i);
        EXPECT_EQ(&fixed[i], counted.buffer() + i);
    }
}

TEST(ZORSequenceOf, RaisesForAnIndexOutOfRange)
{
    CountedSequence counted({1, 2, 3});
    counted.length(2);
    const CountedSequence& fixed = counted;
    for (const int index : {2, 3, -1, INT_MAX, INT_MIN}) {
        EXPECT_THROW(counted[index], ZORRaisedError) << index;
        EXPECT_THROW(fixed[index], ZORRaisedError) << index;
    }
    try {
        counted[2];
    } catch (const ZORRaisedError& raised) {
        EXPECT_STREQ(raised.Error().GetMessage(0).ConvertToChar(),
                     "index out of range: operator[] : length=2, i=2");
    }
}

TEST(ZORSequenceOf, NeverReportsIndexZeroEvenWithoutAnElementInUse)
{
    CountedSequence counted({1});
    counted.length(0);
    counted[0].value = 5;
    EXPECT_EQ(counted.buffer()[0].value, 5);
}

TEST(ZORSequenceOf, ACopyHasTheRoomOfItsSourceAndElementsOfItsOwn)
{
    CountedSequence source({1, 2, 3, 4});
    source.length(3);
    CountedSequence copy(source);
    EXPECT_EQ(copy.maximum(), 4);
    EXPECT_EQ(copy.length(), 3);
    EXPECT_THAT(copy.Values(), ElementsAre(1, 2, 3, 0)) << "only what is in use is copied";
    EXPECT_EQ(copy._Assignations, 3) << "the class says how an element is copied";
    copy[0].value = 9;
    EXPECT_EQ(source[0].value, 1);
}

TEST(ZORSequenceOf, ACopyIsNoLongerThanItsRoom)
{
    CountedSequence source({1, 2});
    source.length(5); // a breach, which must not spread
    const CountedSequence copy(source);
    source.length(2);
    EXPECT_EQ(copy.maximum(), 2);
    EXPECT_EQ(copy.length(), 2);
}

TEST(ZORSequenceOf, ACopyOfAnEmptyOneHasNoBuffer)
{
    const CountedSequence empty;
    CountedSequence copy({1, 2});
    copy = empty;
    EXPECT_EQ(copy.maximum(), 0);
    EXPECT_EQ(copy.length(), 0);
    EXPECT_EQ(copy.buffer(), nullptr);
    EXPECT_EQ(Counted::alive, 0);
}

TEST(ZORSequenceOf, AssigningReplacesRoomAndElements)
{
    const CountedSequence source({7, 8});
    CountedSequence target({1, 2, 3, 4});
    target = source;
    EXPECT_EQ(target.maximum(), 2);
    EXPECT_THAT(target.Values(), ElementsAre(7, 8));
}

TEST(ZORSequenceOf, AssignedToItselfIsAsItWas)
{
    CountedSequence counted({1, 2});
    counted.length(1);
    const CountedSequence& same = counted;
    counted = same;
    EXPECT_EQ(counted.length(), 1);
    EXPECT_THAT(counted.Values(), ElementsAre(1, 2));
}

TEST(ZORSequenceOf, MovesWithoutCopyingAnElement)
{
    CountedSequence source({1, 2});
    const Counted* const elements = source.buffer();
    Counted::copies = 0;
    CountedSequence moved(std::move(source));
    EXPECT_EQ(moved.buffer(), elements);
    EXPECT_EQ(source.maximum(), 0);
    CountedSequence target;
    target = std::move(moved);
    EXPECT_EQ(target.buffer(), elements);
    EXPECT_EQ(Counted::copies, 0);
}

TEST(ZORSequenceOf, DestroysEveryElementItHasRoomFor)
{
    {
        CountedSequence counted({1, 2, 3, 4, 5});
        counted.length(1);
        EXPECT_EQ(Counted::alive, 5);
    }
    EXPECT_EQ(Counted::alive, 0);
}
