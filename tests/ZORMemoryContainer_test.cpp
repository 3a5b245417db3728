#include "ZORMemoryContainer.h"

#include "CountedAllocations.h"
#include "ZORObject.h"
#include "ZORTie.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <random>
#include <vector>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Screw : public ZORObject
{
public:
    Screw() : ZORObject("Screw", nullptr) { ++alive; }
    ~Screw() override { --alive; }
    static int alive;
};
int Screw::alive = 0;

using Any = ZORBaseUnknown_var;

std::vector<const ZORBaseUnknown*> MembersOf(const ZORIContainer_var& iContainer)
{
    std::vector<const ZORBaseUnknown*> members;
    for (int i = 1; i <= iContainer->CountMembers(); ++i)
        members.push_back(iContainer->GetMember(i).Get());
    return members;
}

ZORIContainer_var MakeContainer()
{
    return ZORIContainer_var::Adopt(new ZORMemoryContainer);
}

// An object that has a container as one of its interfaces.
class Shelf : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
};
ZOR_IMPLEMENT_CLASS(Shelf, ZORKindImplementation, ZORBaseUnknown)
const ZORFillDictionary entry("Shelf", "ZORIContainer", ZORCreateMemoryContainer);

} // namespace

TEST(ZORMemoryContainer, TakesCountsListsAndRemovesMembers)
{
    const ZORIContainer_var container = MakeContainer();
    const Any first = Any::Adopt(new Screw);
    const Any second = Any::Adopt(new Screw);
    EXPECT_EQ(container->CountMembers(), 0);
    EXPECT_EQ(container->AddMember(first.Get()), 1);
    EXPECT_EQ(container->AddMember(second.Get()), 1);
    EXPECT_EQ(container->CountMembers(), 2);
    EXPECT_THAT(MembersOf(container), ElementsAre(first.Get(), second.Get()));
    EXPECT_EQ(container->RemoveMember(first.Get()), 1);
    EXPECT_THAT(MembersOf(container), ElementsAre(second.Get()));
    EXPECT_EQ(container->RemoveMember(first.Get()), 0);
}

TEST(ZORMemoryContainer, HasAComponentOnceByWhicheverInterface)
{
    const ZORIContainer_var container = MakeContainer();
    const Any shelf = Any::Adopt(new Shelf);
    const ZORIContainer_var face(shelf);
    EXPECT_EQ(container->AddMember(face.Get()), 1);
    EXPECT_EQ(container->AddMember(shelf.Get()), 0);
    EXPECT_EQ(container->AddMember(face.Get()), 0);
    EXPECT_THAT(MembersOf(container), ElementsAre(shelf.Get()));
    EXPECT_EQ(container->RemoveMember(shelf.Get()), 1);
    EXPECT_EQ(container->AddMember(shelf.Get()), 1);
    EXPECT_EQ(container->RemoveMember(face.Get()), 1);
    EXPECT_EQ(container->CountMembers(), 0);
}

TEST(ZORMemoryContainer, RefusesNullAndItself)
{
    const ZORIContainer_var container = MakeContainer();
    EXPECT_EQ(container->AddMember(nullptr), 0);
    EXPECT_EQ(container->RemoveMember(nullptr), 0);
    EXPECT_EQ(container->AddMember(container.Get()), 0);
    const Any shelf = Any::Adopt(new Shelf);
    EXPECT_EQ(ZORIContainer_var(shelf)->AddMember(shelf.Get()), 0);
}

TEST(ZORMemoryContainer, GivesNoMemberForANumberFromOutside)
{
    const ZORIContainer_var container = MakeContainer();
    EXPECT_FALSE(container->GetMember(1));
    const Any screw = Any::Adopt(new Screw);
    container->AddMember(screw.Get());
    EXPECT_TRUE(container->GetMember(1));
    for (const int number : {-1, 0, 2, 2147483647})
        EXPECT_FALSE(container->GetMember(number)) << number;
}

TEST(ZORMemoryContainer, HoldsItsMembersAndLetsGoOfThem)
{
    ZORIContainer_var container = MakeContainer();
    for (int i = 0; i < 3; ++i)
        container->AddMember(Any::Adopt(new Screw).Get());
    EXPECT_EQ(Screw::alive, 3);
    container->RemoveMember(container->GetMember(2).Get());
    EXPECT_EQ(Screw::alive, 2);
    const Any kept = container->GetMember(1);
    container = nullptr;
    EXPECT_EQ(Screw::alive, 1);
}

TEST(ZORMemoryContainer, LackOfMemoryOnAddingChangesNothing)
{
    const Any screw = Any::Adopt(new Screw);
    int added = 0;
    for (long granted = 0; added == 0; ++granted) {
        ASSERT_LT(granted, 10);
        const ZORIContainer_var container = MakeContainer();
        try {
            const ScopedMemoryShortage shortage(granted);
            added = container->AddMember(screw.Get());
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(container->CountMembers(), 0) << granted;
            EXPECT_EQ(container->AddMember(screw.Get()), 1) << granted;
        }
    }
}

TEST(ZORMemoryContainer, AsAnInterfaceOfAnObjectSharesItsLife)
{
    Any shelf = Any::Adopt(new Shelf);
    ZORIContainer_var container(shelf);
    ASSERT_TRUE(container);
    EXPECT_TRUE(container == shelf);
    container->AddMember(Any::Adopt(new Screw).Get());
    container = nullptr;
    EXPECT_EQ(Screw::alive, 1) << "the object keeps its members";
    EXPECT_EQ(ZORIContainer_var(shelf)->CountMembers(), 1);
    shelf = nullptr;
    EXPECT_EQ(Screw::alive, 0);
    EXPECT_EQ(ZORCreateMemoryContainer(nullptr), nullptr);
}

TEST(ZORMemoryContainer, OnItsOwnIsAComponentWithTheInterface)
{
    const ZORIContainer_var container = MakeContainer();
    EXPECT_STREQ(container->IsA(), "ZORMemoryContainer");
    EXPECT_EQ(container->IsAKindOf("ZORIContainer"), 1);
    EXPECT_EQ(ZORIContainer_var(Any(container)).Get(), container.Get());
}

TEST(ZORMemoryContainer, FollowsAPlainListOverRandomSteps)
{
    std::mt19937 random(7);
    std::vector<Any> screws(30);
    for (Any& screw : screws)
        screw = Any::Adopt(new Screw);
    std::vector<const ZORBaseUnknown*> model;
    const ZORIContainer_var container = MakeContainer();
    for (int step = 0; step < 3000; ++step) {
        ZORBaseUnknown* const screw = screws[random() % screws.size()].Get();
        const auto found = std::find(model.begin(), model.end(), screw);
        const bool isMember = found != model.end();
        if (random() % 2 == 0) {
            EXPECT_EQ(container->AddMember(screw), !isMember);
            if (!isMember)
                model.push_back(screw);
        } else {
            EXPECT_EQ(container->RemoveMember(screw), isMember);
            if (isMember)
                model.erase(found);
        }
        ASSERT_EQ(MembersOf(container), model) << "step " << step;
    }
}
