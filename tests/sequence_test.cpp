#include "sequence.h"

#include "ZORInternalError.h"
#include "ZORRaisedError.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstring>

namespace
{

// Numbers in a plain array. A copied one is negative, which shows who copied it.
class Numbers final : public sequence
{
public:
    Numbers()
    {
        _maximum = 4;
        _buffer = _Numbers;
    }
    void Assignation(const void* iSource, int iIndex) override
    {
        _Numbers[iIndex] = -static_cast<const int*>(iSource)[iIndex];
        ++_Copies;
    }

    int _Numbers[4] = {1, 2, 3, 4};
    int _Copies = 0;
};

class Bare final : public sequence
{
public:
    bool HasBuffer() const { return _buffer != nullptr; }
};

// The fields in their order behind the table.
struct Layout {
    void* table;
    int maximum;
    int length;
    void* buffer;
};

std::string TextOf(void (*iRaise)(const Numbers&), const Numbers& iNumbers)
{
    try {
        iRaise(iNumbers);
    } catch (const ZORRaisedError& raised) {
        EXPECT_STREQ(raised.Error().IsA(), "ZORInternalError");
        EXPECT_STREQ(raised.Error().GetFile(), "Platform/Sequences.m/src/sequence");
        return raised.Error().GetMessage(0).ConvertToChar();
    }
    return "nothing raised";
}

} // namespace

TEST(sequence, StartsEmpty)
{
    const Bare bare;
    EXPECT_EQ(bare.maximum(), 0);
    EXPECT_EQ(bare.length(), 0);
    EXPECT_FALSE(bare.HasBuffer());
}

TEST(sequence, KeepsMaximumLengthAndBufferInThisOrder)
{
    Numbers numbers;
    numbers.length(3);
    static_assert(sizeof(sequence) == sizeof(Layout));
    Layout layout;
    std::memcpy(&layout, static_cast<const void*>(&numbers), sizeof layout);
    EXPECT_EQ(layout.maximum, 4);
    EXPECT_EQ(layout.length, 3);
    EXPECT_EQ(layout.buffer, numbers._Numbers);
}

TEST(sequence, SettingTheLengthLeavesRoomAndElementsAlone)
{
    Numbers numbers;
    numbers.length(4);
    numbers.length(1);
    EXPECT_EQ(numbers.length(), 1);
    EXPECT_EQ(numbers.maximum(), 4);
    EXPECT_EQ(numbers._Numbers[3], 4);
}

TEST(sequence, CopiesTheFirstElementsThroughAssignation)
{
    Numbers numbers;
    const int source[] = {10, 20, 30, 40};
    numbers.boucle(source, 3);
    EXPECT_THAT(numbers._Numbers, testing::ElementsAre(-10, -20, -30, 4));
    EXPECT_EQ(numbers._Copies, 3);
    EXPECT_EQ(numbers.length(), 0) << "the length is the caller's business";
}

TEST(sequence, CopiesNothingForACountBelowOne)
{
    Numbers numbers;
    numbers.boucle(nullptr, 0);
    numbers.boucle(nullptr, -1);
    EXPECT_EQ(numbers._Copies, 0);
}

TEST(sequence, WithoutElementsOfItsOwnCopiesNothing)
{
    Bare bare;
    bare.boucle(nullptr, 3);
    EXPECT_EQ(bare.length(), 0);
}

TEST(sequence, ReportsAnIndexOutOfRangeWithTheNumbersInTheirPlaces)
{
    const Numbers numbers;
    EXPECT_EQ(
        TextOf([](const Numbers& i) { i.exit("operator[] : %length, %i", 3, 7, 0, 0); }, numbers),
        "index out of range: operator[] : length=3, i=7");
    EXPECT_EQ(TextOf([](const Numbers& i) { i.exit("%a%b %c,%d %e", 1, -2, 3, 4); }, numbers),
              "index out of range: a=1b=-2 c=3,d=4 e");
    EXPECT_EQ(TextOf([](const Numbers& i) { i.exit("plain", 1, 2, 3, 4); }, numbers),
              "index out of range: plain");
}

// This program is linked with the platform alone, and loaded it with everything bound.
TEST(sequence, IsUsableWithoutTheLibraryThatMakesTheSequencesOfConfigurationData)
{
    EXPECT_EQ(dlopen("libKW4TOOLS.so.1", RTLD_LAZY | RTLD_NOLOAD), nullptr);
    void* const platform = dlopen("libZORPLATFORM.so.1", RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(platform, nullptr) << dlerror();
    dlclose(platform);
}
