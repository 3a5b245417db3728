#include "ZORTie.h"

#include "ZORHandle.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

// What component models promise of identity, whoever asks, when, and in which thread.

namespace
{

// An object with three interfaces; what its destructor does is the test's to say.
class Robot : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    Robot() { ++alive; }
    ~Robot() override
    {
        if (atEnd)
            atEnd(*this);
        --alive;
    }

    std::function<void(Robot&)> atEnd;
    static std::atomic<int> alive;
};
std::atomic<int> Robot::alive{0};
ZOR_IMPLEMENT_CLASS(Robot, ZORKindImplementation, ZORBaseUnknown)

#define TEST_INTERFACE(Interface)                                                                  \
    class Interface : public ZORBaseUnknown                                                        \
    {                                                                                              \
        ZOR_DECLARE_CLASS                                                                          \
    public:                                                                                        \
        virtual Robot* Behind() = 0;                                                               \
    };                                                                                             \
    ZOR_IMPLEMENT_CLASS(Interface, ZORKindInterface, ZORBaseUnknown)

TEST_INTERFACE(IArm)
TEST_INTERFACE(ILeg)
TEST_INTERFACE(IEye)
TEST_INTERFACE(IBroken)

class TIEIArmRobot final : public IArm
{
    ZOR_DECLARE_TIE(IArm, Robot)
public:
    Robot* Behind() override { return Self(); }
};
ZORBaseUnknown* CreateTIEIArmRobot(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(IArm, Robot, ZORKindTie)

class TIEILegRobot final : public ILeg
{
    ZOR_DECLARE_TIE(ILeg, Robot)
public:
    Robot* Behind() override { return Self(); }
};
ZORBaseUnknown* CreateTIEILegRobot(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(ILeg, Robot, ZORKindTie)

// An adapter that asks for other interfaces when it goes.
class TIEIEyeRobot final : public IEye
{
    ZOR_DECLARE_CLASS
public:
    static int found;
    explicit TIEIEyeRobot(ZORBaseUnknown* iObject)
    {
        TieConstructor(this, iObject, Robot::ClassId(), IEye::ClassId());
    }
    ~TIEIEyeRobot() override
    {
        for (const char* interface : {"IEye", "ILeg", "IArm", "INobody"})
            if (ZORBaseUnknown* const other = QueryInterface(interface)) {
                ++found;
                other->Release();
            }
    }
    Robot* Behind() override { return static_cast<Robot*>(GetImpl()); }
};
int TIEIEyeRobot::found = 0;
ZOR_IMPLEMENT_CLASS_STATICS(TIEIEyeRobot, new ZORMetaClass("IEye", IEye::MetaObject(),
                                                           Robot::MetaObject(), ZORKindTie))
ZOR_IMPLEMENT_CLASS_VIRTUALS(TIEIEyeRobot)
ZORBaseUnknown* CreateEye(ZORBaseUnknown* iObject)
{
    return new TIEIEyeRobot(iObject);
}

// Every class has one: the base's own adapters are made even when only the base is left.
class TIEILegZORBaseUnknown final : public ILeg
{
    ZOR_DECLARE_TIE(ILeg, ZORBaseUnknown)
public:
    Robot* Behind() override { return nullptr; }
};
ZORBaseUnknown* CreateTIEILegZORBaseUnknown(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(ILeg, ZORBaseUnknown, ZORKindTie)

class RaisingAdapter final : public IBroken
{
public:
    explicit RaisingAdapter(ZORBaseUnknown* iObject)
    {
        TieConstructor(this, iObject, Robot::ClassId(), IBroken::ClassId());
        throw std::runtime_error("no adapter today");
    }
    Robot* Behind() override { return nullptr; }
};
ZORBaseUnknown* CreateRaising(ZORBaseUnknown* iObject)
{
    return new RaisingAdapter(iObject);
}
ZORBaseUnknown* CreateNothing(ZORBaseUnknown*)
{
    return nullptr;
}

const ZORFillDictionary armEntry("Robot", "IArm", CreateTIEIArmRobot);
const ZORFillDictionary legEntry("Robot", "ILeg", CreateTIEILegRobot);
const ZORFillDictionary eyeEntry("Robot", "IEye", CreateEye);

unsigned int CountOf(ZORBaseUnknown& ioObject)
{
    ioObject.AddRef();
    return ioObject.Release();
}

using Any = ZORBaseUnknown_var;

// The object and its adapters, each held.
std::vector<Any> AllFacesOf(ZORBaseUnknown& ioObject)
{
    std::vector<Any> faces{Any::Adopt(ioObject.QueryInterface("Robot"))};
    for (const char* interface : {"IArm", "ILeg", "IEye"})
        faces.push_back(Any::Adopt(ioObject.QueryInterface(interface)));
    return faces;
}

// Runs the action in several threads that start as nearly together as they can.
void Together(int iThreads, const std::function<void(int)>& iAction)
{
    std::atomic<int> waiting{iThreads};
    std::vector<std::thread> threads;
    for (int i = 0; i < iThreads; ++i)
        threads.emplace_back([&, i] {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            iAction(i);
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

TEST(ObjectIdentity, AQueryThereAndBackGivesAnEqualObjectFromEveryAdapter)
{
    const auto robot = Any::Adopt(new Robot);
    for (const Any& from : AllFacesOf(*robot))
        for (const char* there : {"Robot", "IArm", "ILeg", "IEye", "ZORBaseUnknown"}) {
            const auto found = Any::Adopt(from->QueryInterface(there));
            ASSERT_TRUE(found) << there;
            EXPECT_EQ(from->IsEqual(found.Get()), 1) << from->IsA() << " to " << there;
            EXPECT_EQ(found->IsEqual(from.Get()), 1) << there << " to " << from->IsA();
            const auto back = Any::Adopt(found->QueryInterface(from->IsA()));
            EXPECT_EQ(back.Get(), from.Get()) << from->IsA() << " to " << there << " and back";
        }
}

TEST(ObjectIdentity, EveryAdapterLeadsToTheVeryObject)
{
    const auto robot = Any::Adopt(new Robot);
    for (const Any& face : AllFacesOf(*robot)) {
        const auto object = Any::Adopt(face->QueryInterface("ZORBaseUnknown"));
        EXPECT_EQ(object.Get(), robot.Get());
        void* byIdentifier = nullptr;
        EXPECT_EQ(face->QueryInterface(ZORBaseUnknown::ClassId(), &byIdentifier),
                  ZORInterfaceFound);
        EXPECT_EQ(byIdentifier, robot.Get());
        static_cast<ZORBaseUnknown*>(byIdentifier)->Release();
    }
}

TEST(ObjectIdentity, TwoObjectsAreNeverEqual)
{
    std::vector<Any> robots;
    for (int i = 0; i < 5; ++i)
        robots.push_back(Any::Adopt(new Robot));
    for (const Any& one : robots)
        for (const Any& other : robots)
            for (const Any& faceOfOne : AllFacesOf(*one))
                for (const Any& faceOfOther : AllFacesOf(*other))
                    EXPECT_EQ(faceOfOne == faceOfOther, one.Get() == other.Get());
}

TEST(ObjectIdentity, AnUnknownInterfaceGivesNullFromEveryAdapterAndLeavesTheCount)
{
    const auto robot = Any::Adopt(new Robot);
    const std::vector<Any> faces = AllFacesOf(*robot);
    const unsigned int before = CountOf(*robot);
    for (const Any& face : faces) {
        EXPECT_EQ(face->QueryInterface("INobody"), nullptr);
        void* found = robot.Get();
        EXPECT_EQ(face->QueryInterface(IBroken::ClassId(), &found), ZORNoInterface);
        EXPECT_EQ(found, nullptr);
    }
    EXPECT_EQ(CountOf(*robot), before);
}

TEST(ObjectIdentity, ACreatorWithoutMemoryGivesNullAndLeavesTheCount)
{
    const ZORFillDictionary entry("Robot", "IBroken", CreateNothing);
    Robot robot;
    EXPECT_EQ(robot.QueryInterface("IBroken"), nullptr);
    EXPECT_EQ(CountOf(robot), 1U);
}

TEST(ObjectIdentity, AnAdapterWhoseConstructorRaisesLeavesNoTrace)
{
    const ZORFillDictionary entry("Robot", "IBroken", CreateRaising);
    const auto robot = Any::Adopt(new Robot);
    const std::vector<Any> before = AllFacesOf(*robot);
    const unsigned int count = CountOf(*robot);
    void* found = robot.Get();
    EXPECT_THROW(robot->QueryInterface(IBroken::ClassId(), &found), std::runtime_error);
    EXPECT_EQ(found, nullptr);
    EXPECT_THROW(robot->QueryInterface("IBroken"), std::runtime_error);
    EXPECT_EQ(CountOf(*robot), count);
    const std::vector<Any> after = AllFacesOf(*robot);
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(after[i].Get(), before[i].Get());
}

TEST(ObjectIdentity, ACreatorMakesNoAdapterForAnObjectOfAnotherClass)
{
    const auto other = Any::Adopt(new ZORBaseUnknown);
    EXPECT_EQ(CreateTIEIArmRobot(other.Get()), nullptr);
    EXPECT_EQ(CountOf(*other), 1U);
    const ZORFillDictionary wrong("ZORBaseUnknown", "IArm", CreateTIEIArmRobot);
    EXPECT_FALSE(ZORHandle<IArm>(other));
    EXPECT_TRUE(ZORIsOfClass(other.Get(), ZORBaseUnknown::MetaObject()));
    EXPECT_FALSE(ZORIsOfClass(other.Get(), Robot::MetaObject()));
    EXPECT_FALSE(ZORIsOfClass(nullptr, Robot::MetaObject()));
}

TEST(ObjectIdentity, ACreatorThatIsGivenAnAdapterWorksForItsObject)
{
    const auto robot = Any::Adopt(new Robot);
    const ZORHandle<ILeg> leg(robot);
    const auto made = ZORHandle<IArm>::Adopt(static_cast<IArm*>(CreateTIEIArmRobot(leg.Get())));
    ASSERT_TRUE(made);
    EXPECT_EQ(made->Behind(), robot.Get());
    EXPECT_TRUE(made == leg);
    EXPECT_EQ(ZORHandle<IArm>(robot).Get(), made.Get());
}

TEST(ObjectIdentity, AQueryFromTheDestructorFindsTheAdaptersThatAreThere)
{
    auto* const robot = new Robot;
    IArm* known = nullptr;
    robot->atEnd = [&known](Robot& self) {
        const ZORHandle<IArm> arm(&self);
        EXPECT_EQ(arm.Get(), known);
        EXPECT_EQ(arm->Behind(), &self);
        const auto unknown = Any::Adopt(self.QueryInterface("INobody"));
        EXPECT_FALSE(unknown);
    };
    ZORHandle<IArm> arm(robot);
    known = arm.Get();
    robot->Release();
    arm = nullptr;
    EXPECT_EQ(Robot::alive, 0);
}

TEST(ObjectIdentity, AQueryFromTheDestructorMayMakeAnAdapter)
{
    auto* const robot = new Robot;
    bool asked = false;
    robot->atEnd = [&asked](Robot& self) {
        const ZORHandle<IArm> arm(&self);
        asked = arm && arm->Behind() == &self;
        Any copy(arm);
        copy = nullptr;
    };
    robot->Release();
    EXPECT_TRUE(asked);
    EXPECT_EQ(Robot::alive, 0);
}

TEST(ObjectIdentity, AQueryFromTheDestructorOfAnAdapterIsSafe)
{
    const ZORFillDictionary base("ZORBaseUnknown", "ILeg", CreateTIEILegZORBaseUnknown);
    for (const char* first : {"IEye", "IArm"}) {
        TIEIEyeRobot::found = 0;
        auto* const robot = new Robot;
        for (const char* interface : {first, "IEye"})
            Any::Adopt(robot->QueryInterface(interface));
        EXPECT_EQ(robot->Release(), 0U);
        // The eye itself, and a leg for the base that is left.
        EXPECT_EQ(TIEIEyeRobot::found, 2) << first;
    }
    EXPECT_EQ(Robot::alive, 0);
}

TEST(ObjectIdentity, AdaptersOfAnObjectOnTheStackGoWithIt)
{
    TIEIEyeRobot::found = 0;
    {
        Robot robot;
        const ZORHandle<IEye> eye(&robot);
        EXPECT_EQ(eye->Behind(), &robot);
    }
    EXPECT_EQ(TIEIEyeRobot::found, 1);
    EXPECT_EQ(Robot::alive, 0);
}

TEST(ObjectIdentity, ReferencesMayGoInAnyOrder)
{
    std::vector<int> order{0, 1, 2, 3};
    do {
        auto* const robot = new Robot;
        std::vector<Any> faces = AllFacesOf(*robot);
        robot->Release();
        for (const int each : order) {
            EXPECT_EQ(Robot::alive, 1);
            faces[static_cast<std::size_t>(each)] = nullptr;
        }
        EXPECT_EQ(Robot::alive, 0);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(ObjectIdentity, ThreadsThatAskAtOnceGetTheSameAdapter)
{
    for (int round = 0; round < 200; ++round) {
        const auto robot = Any::Adopt(new Robot);
        std::vector<ZORHandle<IArm>> arms(4);
        Together(4, [&](int i) { arms[static_cast<std::size_t>(i)] = ZORHandle<IArm>(robot); });
        for (const ZORHandle<IArm>& arm : arms)
            ASSERT_EQ(arm.Get(), arms.front().Get());
        ASSERT_EQ(ZORHandle<IArm>(robot).Get(), arms.front().Get());
    }
    EXPECT_EQ(Robot::alive, 0);
}

TEST(ObjectIdentity, TheLastReleaseMayComeInAnyThread)
{
    for (int round = 0; round < 200; ++round) {
        auto* const robot = new Robot;
        robot->atEnd = [](Robot& self) { EXPECT_TRUE(ZORHandle<IArm>(&self)); };
        std::vector<Any> faces = AllFacesOf(*robot);
        robot->Release();
        Together(4, [&](int i) { faces[static_cast<std::size_t>(i)] = nullptr; });
        ASSERT_EQ(Robot::alive, 0);
    }
}

TEST(ObjectIdentity, ThreadsThatCountAndQueryLeaveTheCountAsItWas)
{
    const auto robot = Any::Adopt(new Robot);
    Together(4, [&](int i) {
        const char* const interfaces[] = {"IArm", "ILeg", "IEye", "INobody"};
        for (int n = 0; n < 500; ++n) {
            Any face = Any::Adopt(robot->QueryInterface(interfaces[(i + n) % 4]));
            const Any copy = face;
            face = robot;
        }
    });
    EXPECT_EQ(CountOf(*robot), 1U);
}

TEST(ObjectIdentity, EntriesMayComeAndGoWhileThreadsQuery)
{
    std::atomic<bool> done{false};
    std::thread entering([&done] {
        while (!done)
            const ZORFillDictionary entry("Robot", "IBroken", CreateNothing);
    });
    Together(2, [](int) {
        for (int n = 0; n < 500; ++n) {
            const auto robot = Any::Adopt(new Robot);
            EXPECT_TRUE(ZORHandle<IArm>(robot));
            EXPECT_FALSE(ZORHandle<IBroken>(robot));
        }
    });
    done = true;
    entering.join();
    EXPECT_EQ(Robot::alive, 0);
}

TEST(ZORHandle, AdoptsTheReferenceOfANewObject)
{
    {
        const auto robot = ZORHandle<Robot>::Adopt(new Robot);
        EXPECT_EQ(CountOf(*robot), 1U);
    }
    EXPECT_EQ(Robot::alive, 0);
    EXPECT_FALSE(ZORHandle<Robot>::Adopt(nullptr));
}
