#include "ObjInMemory.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

// Leaves the state for the next test as it is at load.
class ObjInMemoryTest : public testing::Test
{
protected:
    void TearDown() override
    {
        for (int* const counter :
             {&ObjInMemory::_NbCfgItm, &ObjInMemory::_NbEff, &ObjInMemory::_NbCateg,
              &ObjInMemory::_NbCfgHndler, &ObjInMemory::_NbMatrix, &ObjInMemory::_NbCfgRule,
              &ObjInMemory::_UnloadModel, &ObjInMemory::_WorkInMemory,
              &ObjInMemory::_WorkInMemoryCpt})
            *counter = 0;
    }
};

TEST_F(ObjInMemoryTest, IsNotWorkingInMemoryAtLoad)
{
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 0);
    EXPECT_EQ(ObjInMemory::_WorkInMemory, 0);
    EXPECT_EQ(ObjInMemory::_WorkInMemoryCpt, 0);
}

TEST_F(ObjInMemoryTest, NumbersThePeriodsOfWork)
{
    EXPECT_EQ(ObjInMemory::SetWorkInMemory(), 1);
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 1);
    EXPECT_EQ(ObjInMemory::SetWorkInMemory(), 0) << "one is open";
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 1);
    ObjInMemory::UnsetWorkInMemory();
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 0);
    EXPECT_EQ(ObjInMemory::SetWorkInMemory(), 1);
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 2);
    EXPECT_EQ(ObjInMemory::_WorkInMemoryCpt, 2);
}

TEST_F(ObjInMemoryTest, ClosingWhatIsNotOpenChangesNothing)
{
    ObjInMemory::UnsetWorkInMemory();
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 0);
    EXPECT_EQ(ObjInMemory::_WorkInMemoryCpt, 0);
    ObjInMemory::SetWorkInMemory();
    ObjInMemory::UnsetWorkInMemory();
    ObjInMemory::UnsetWorkInMemory();
    EXPECT_EQ(ObjInMemory::_WorkInMemoryCpt, 1);
}

TEST_F(ObjInMemoryTest, SeesWhatAProgramWrites)
{
    ObjInMemory::_WorkInMemoryCpt = 41;
    EXPECT_EQ(ObjInMemory::SetWorkInMemory(), 1);
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 42);
    ObjInMemory::_WorkInMemory = 7;
    EXPECT_EQ(ObjInMemory::WorkInMemory(), 7);
    EXPECT_EQ(ObjInMemory::SetWorkInMemory(), 0);
}

TEST_F(ObjInMemoryTest, ShowsAProgramWhatItWrites)
{
    ObjInMemory::SetWorkInMemory();
    EXPECT_EQ(ObjInMemory::_WorkInMemory, 1);
    EXPECT_EQ(ObjInMemory::_WorkInMemoryCpt, 1);
    ObjInMemory::UnsetWorkInMemory();
    EXPECT_EQ(ObjInMemory::_WorkInMemory, 0);
}

// There is one of each, whoever looks: this program, and whatever finds it by its symbol.
TEST_F(ObjInMemoryTest, SharesItsCountersWithAllOfTheProcess)
{
    const struct {
        const char* symbol;
        int* counter;
    } counters[] = {
        {"_ZN11ObjInMemory9_NbCfgItmE", &ObjInMemory::_NbCfgItm},
        {"_ZN11ObjInMemory6_NbEffE", &ObjInMemory::_NbEff},
        {"_ZN11ObjInMemory8_NbCategE", &ObjInMemory::_NbCateg},
        {"_ZN11ObjInMemory12_NbCfgHndlerE", &ObjInMemory::_NbCfgHndler},
        {"_ZN11ObjInMemory9_NbMatrixE", &ObjInMemory::_NbMatrix},
        {"_ZN11ObjInMemory10_NbCfgRuleE", &ObjInMemory::_NbCfgRule},
        {"_ZN11ObjInMemory12_UnloadModelE", &ObjInMemory::_UnloadModel},
        {"_ZN11ObjInMemory13_WorkInMemoryE", &ObjInMemory::_WorkInMemory},
        {"_ZN11ObjInMemory16_WorkInMemoryCptE", &ObjInMemory::_WorkInMemoryCpt},
    };
    int number = 0;
    for (const auto& [symbol, counter] : counters) {
        EXPECT_EQ(*counter, 0) << symbol;
        int* const shared = static_cast<int*>(dlsym(RTLD_DEFAULT, symbol));
        ASSERT_NE(shared, nullptr) << symbol;
        *counter = ++number;
        EXPECT_EQ(*shared, number) << symbol;
        *shared = -number;
        EXPECT_EQ(*counter, -number) << symbol;
    }
}
