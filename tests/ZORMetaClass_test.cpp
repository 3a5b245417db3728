#include "ZORMetaClass.h"

#include "SupportedClasses.h"
#include "ZORDictionary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace
{

ZORBaseUnknown* CreateNothing(ZORBaseUnknown*)
{
    return nullptr;
}

ZORBaseUnknown* CreateNothingEither(ZORBaseUnknown*)
{
    return nullptr;
}

using ::testing::ElementsAre;
using ::testing::IsEmpty;

} // namespace

TEST(QueryMetaObject, FindsOnlyWhatIsRegistered)
{
    EXPECT_EQ(QueryMetaObject("Chassis"), nullptr);
    ZORMetaClass* const made = fct_FindMetaObject("Chassis");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(QueryMetaObject("Chassis"), made);
    EXPECT_EQ(fct_FindMetaObject("Chassis"), made);
    EXPECT_EQ(QueryMetaObject(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(fct_FindMetaObject(nullptr), nullptr);
}

TEST(ZORMetaClass, IsBareUntilItsClassIsRegistered)
{
    ZORMetaClass* const meta = fct_FindMetaObject("Gearbox");
    EXPECT_STREQ(meta->GetClassName(), "Gearbox");
    EXPECT_FALSE(meta->HasClassId());
    EXPECT_EQ(meta->GetKind(), ZORKindUnknown);
    EXPECT_EQ(meta->GetParent(), nullptr);
    EXPECT_EQ(meta->GetImplementation(), nullptr);
}

TEST(ZORMetaClass, KeepsItsFirstIdentifier)
{
    ZORMetaClass meta("Axle");
    const GUID first = fct_CreateCLSID();
    meta.SetClassId(first);
    meta.SetClassId(fct_CreateCLSID());
    EXPECT_TRUE(meta.HasClassId());
    EXPECT_EQ(meta.GetClassId(), first);
}

TEST(ZORRegisterClass, MakesTheMetaObjectOfAnUnknownClass)
{
    ZORMetaClass* const parent = fct_FindMetaObject("Machine");
    ZORMetaClass* const meta = ZORRegisterClass("Lathe", ZORKindImplementation, parent);
    EXPECT_EQ(QueryMetaObject("Lathe"), meta);
    EXPECT_TRUE(meta->HasClassId());
    EXPECT_EQ(QueryMetaObject(meta->GetClassId()), meta);
    EXPECT_EQ(meta->GetKind(), ZORKindImplementation);
    EXPECT_EQ(meta->GetParent(), parent);
}

TEST(ZORRegisterClass, CompletesAClassKnownByNameOnly)
{
    ZORMetaClass* const bare = fct_FindMetaObject("Mill");
    ZORMetaClass* const meta = ZORRegisterClass("Mill", ZORKindInterface, nullptr);
    EXPECT_EQ(meta, bare);
    EXPECT_TRUE(meta->HasClassId());
    EXPECT_EQ(QueryMetaObject(meta->GetClassId()), meta);
}

TEST(ZORRegisterClass, LeavesTheIdentifierOfAKnownClass)
{
    const GUID before = ZORRegisterClass("Press", ZORKindImplementation, nullptr)->GetClassId();
    EXPECT_EQ(ZORRegisterClass("Press", ZORKindImplementation, nullptr)->GetClassId(), before);
}

TEST(ZORMetaClass, FindsNamesAlongItsAncestors)
{
    ZORMetaClass* const machine = ZORRegisterClass("Tool", ZORKindImplementation, nullptr);
    ZORMetaClass* const drill = ZORRegisterClass("Drill", ZORKindImplementation, machine);
    EXPECT_EQ(drill->IsAKindOf("Drill"), 1);
    EXPECT_EQ(drill->IsAKindOf("Tool"), 1);
    EXPECT_EQ(machine->IsAKindOf("Drill"), 0);
    EXPECT_EQ(drill->IsAKindOf(""), 0);
    EXPECT_EQ(drill->IsAKindOf(nullptr), 0);
}

TEST(ZORDictionary, ListsTheClassesOfAnInterfaceInTheOrderOfTheirEntries)
{
    EXPECT_THAT(Supported("IWheel"), IsEmpty());
    EXPECT_THAT(Supported(nullptr), IsEmpty());
    const ZORFillDictionary second("WheelB", "IWheel", CreateNothing);
    {
        const ZORFillDictionary first("WheelA", "IWheel", CreateNothing);
        const ZORFillDictionary third("WheelC", "IWheel", CreateNothing);
        EXPECT_THAT(Supported("IWheel"), ElementsAre("WheelB", "WheelA", "WheelC"));
    }
    EXPECT_THAT(Supported("IWheel"), ElementsAre("WheelB"));
}

TEST(ZORDictionary, ListsWhatIsLeftWhicheverEntriesAreWithdrawn)
{
    std::mt19937 random(20);
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        std::vector<std::string> names;
        for (const char* const each : {"SpokeA", "SpokeB", "SpokeC", "SpokeD"}) {
            AddDictionary(GUID{}, nullptr, each, "ISpoke", CreateNothing, nullptr, nullptr, 0);
            names.emplace_back(each);
        }
        while (!names.empty()) {
            const auto withdrawn = names.begin() + static_cast<long>(random() % names.size());
            EXPECT_EQ(RemoveDictionary(withdrawn->c_str(), "ISpoke"), 1);
            names.erase(withdrawn);
            EXPECT_EQ(Supported("ISpoke"), names);
        }
    }
}

// As when a library is unloaded that supports an interface with all its classes.
TEST(ZORDictionary, HoldsManyClassesOfOneInterfaceAndWithdrawsThem)
{
    constexpr int kClasses = 30'000;
    std::vector<std::string> names;
    for (int i = 0; i < kClasses; ++i)
        names.push_back("Screw" + std::to_string(i));
    for (const std::string& each : names)
        AddDictionary(GUID{}, nullptr, each.c_str(), "IScrew", CreateNothing, nullptr, nullptr, 0);
    EXPECT_EQ(Supported("IScrew"), names);
    int withdrawn = 0;
    for (const std::string& each : names)
        withdrawn += RemoveDictionary(each.c_str(), "IScrew");
    EXPECT_EQ(withdrawn, kClasses);
    EXPECT_THAT(Supported("IScrew"), IsEmpty());
}

TEST(ZORDictionary, AClassWithTwoEntriesIsListedOnceUntilBothAreGone)
{
    const ZORFillDictionary first("Rim", "IRound", CreateNothing);
    {
        const ZORFillDictionary again("Rim", "IRound", CreateNothingEither);
        EXPECT_THAT(Supported("IRound"), ElementsAre("Rim"));
    }
    EXPECT_THAT(Supported("IRound"), ElementsAre("Rim"));
    EXPECT_EQ(RemoveDictionary("Rim", "IRound"), 1);
    EXPECT_EQ(RemoveDictionary("Rim", "IRound"), 0);
    EXPECT_EQ(RemoveDictionary(nullptr, "IRound"), 0);
    EXPECT_THAT(Supported("IRound"), IsEmpty());
}

TEST(ZORDictionary, WithdrawingWhatWasNeverEnteredRegistersNothing)
{
    EXPECT_EQ(RemoveDictionary("Stranger", "IStrange"), 0);
    EXPECT_EQ(QueryMetaObject("Stranger"), nullptr);
    EXPECT_EQ(QueryMetaObject("IStrange"), nullptr);
}

TEST(ZORDictionary, TakesAnEntryWithACreatorByHand)
{
    AddDictionary(fct_CreateCLSID(), nullptr, "Hub", "ITurning", CreateNothing, nullptr, nullptr,
                  0);
    EXPECT_THAT(Supported("ITurning"), ElementsAre("Hub"));
}

TEST(ZORDictionary, ANullArgumentGivesNoEntry)
{
    ZORMetaClass* const axle = ZORRegisterClass("Axle", ZORKindImplementation, nullptr);
    const GUID other = fct_CreateCLSID();
    const GUID* const kind = &CLSID_ZORMetaClass;
    AddDictionary(other, kind, "Axle", nullptr, nullptr, nullptr, nullptr, 0);
    AddDictionary(other, nullptr, "Axle", nullptr, nullptr, axle, nullptr, 0);
    AddDictionary(other, &other, "Axle", nullptr, nullptr, axle, nullptr, 0);
    EXPECT_EQ(QueryMetaObject(other), nullptr);
    AddDictionary(other, kind, "Axle", nullptr, nullptr, axle, nullptr, 0);
    EXPECT_EQ(QueryMetaObject(other), axle);

    AddDictionary(other, nullptr, "Axle", "IBearing", nullptr, nullptr, nullptr, 0);
    AddDictionary(other, nullptr, nullptr, "IBearing", CreateNothing, nullptr, nullptr, 0);
    AddDictionary(other, nullptr, "Axle", nullptr, CreateNothing, nullptr, nullptr, 0);
    EXPECT_THAT(Supported("IBearing"), IsEmpty());
    EXPECT_EQ(RemoveDictionary("Axle", nullptr), 0);
}

TEST(FctCreateClsid, NeverMakesTheSameIdentifierTwice)
{
    std::set<std::array<std::uint8_t, 16>> made;
    for (int i = 0; i < 10000; ++i)
        EXPECT_TRUE(made.insert(fct_CreateCLSID().bytes).second);
}

TEST(QueryMetaObject, GivesEveryThreadTheSameMetaObjects)
{
    std::vector<std::thread> threads;
    std::vector<ZORMetaClass*> found(8);
    for (ZORMetaClass*& mine : found)
        threads.emplace_back([&mine] {
            for (int i = 0; i < 200; ++i)
                mine = fct_FindMetaObject(("Shared" + std::to_string(i)).c_str());
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(found, ::testing::Each(QueryMetaObject("Shared199")));
}
