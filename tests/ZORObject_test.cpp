#include "ZORObject.h"

#include "ZORTie.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

class Crane : public ZORObject
{
    ZOR_DECLARE_CLASS_STATICS
public:
    explicit Crane(const char* iType) : ZORObject(iType, ClassName()) {}
    int Load() const { return 12; }
};
ZOR_IMPLEMENT_CLASS_STATICS(Crane, ZORRegisterClass("Crane", ZORKindImplementation,
                                                    ZORObject::MetaObject()))

// A class that has nothing to do with ZORObject.
class Anchor : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    int weight = 900;
};
ZOR_IMPLEMENT_CLASS(Anchor, ZORKindImplementation, ZORBaseUnknown)

class ILifting : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    virtual int GetLoad() = 0;
};
ZOR_IMPLEMENT_CLASS(ILifting, ZORKindInterface, ZORBaseUnknown)

class TIEILiftingCrane final : public ILifting
{
    ZOR_DECLARE_TIE(ILifting, Crane)
public:
    int GetLoad() override { return Self()->Load(); }
};
ZORBaseUnknown* CreateTIEILiftingCrane(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(ILifting, Crane, ZORKindTie)

class TIEILiftingAnchor final : public ILifting
{
    ZOR_DECLARE_TIE(ILifting, Anchor)
public:
    int GetLoad() override { return Self()->weight; }
};
ZORBaseUnknown* CreateTIEILiftingAnchor(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(ILifting, Anchor, ZORKindTie)

using Winch = ZORObject; // a late type
class TIEILiftingWinch final : public ILifting
{
    ZOR_DECLARE_TIE(ILifting, Winch)
public:
    int GetLoad() override { return 3; }
};
ZORBaseUnknown* CreateTIEILiftingWinch(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(ILifting, Winch, ZORKindTie)

// An adapter made by hand, without the check of CreateTIE….
ZORBaseUnknown* CreateUnchecked(ZORBaseUnknown* iObject)
{
    return new TIEILiftingAnchor(iObject);
}

const ZORFillDictionary crane("Crane", "ILifting", CreateTIEILiftingCrane);
const ZORFillDictionary anchor("Anchor", "ILifting", CreateTIEILiftingAnchor);
const ZORFillDictionary winch("Winch", "ILifting", CreateTIEILiftingWinch);

ZORHandle<ZORObject> Make(const char* iLateType, const char* iClassName)
{
    return ZORHandle<ZORObject>::Adopt(new ZORObject(iLateType, iClassName));
}

} // namespace

TEST(ZORObject, IsOfTheLateTypeWhenNoClassBearsTheSecondName)
{
    const auto object = Make("Winch", "SHIP");
    EXPECT_STREQ(object->IsA(), "Winch");
    EXPECT_EQ(object->GetMetaObject(), QueryMetaObject("Winch"));
    for (const char* name :
         {"Winch", "ZORObject", "ZORImplementationAdapter", "ZOREventSubscriber", "ZORBaseUnknown"})
        EXPECT_EQ(object->IsAKindOf(name), 1) << name;
    EXPECT_EQ(object->IsAKindOf("SHIP"), 0);
    EXPECT_EQ(QueryMetaObject("SHIP"), nullptr);
    const ZORHandle<ILifting> lifting(object);
    ASSERT_TRUE(lifting);
    EXPECT_EQ(lifting->GetLoad(), 3);
}

TEST(ZORObject, IsOfTheRegisteredClassThatTheSecondNameTells)
{
    const auto object = ZORHandle<Crane>::Adopt(new Crane("Winch"));
    EXPECT_STREQ(object->IsA(), "Crane");
    EXPECT_EQ(object->GetMetaObject(), Crane::MetaObject());
    EXPECT_EQ(object->IsAKindOf("ZORObject"), 1);
    EXPECT_EQ(object->IsAKindOf("Winch"), 0);
    EXPECT_EQ(ZORHandle<ILifting>(object)->GetLoad(), 12);
}

TEST(ZORObject, IsAMereObjectWithoutNames)
{
    for (const char* late : {static_cast<const char*>(nullptr), ""})
        for (const char* name : {static_cast<const char*>(nullptr), ""}) {
            const auto object = Make(late, name);
            EXPECT_STREQ(object->IsA(), "ZORObject");
            EXPECT_EQ(object->GetMetaObject(), ZORObject::MetaObject());
            EXPECT_FALSE(ZORHandle<ILifting>(object));
        }
    EXPECT_EQ(QueryMetaObject(""), nullptr);
}

TEST(ZORObject, ALateTypeNeverMakesItPassForAnotherClass)
{
    // Known by its dictionary entry only, so far.
    ASSERT_FALSE(QueryMetaObject("Anchor")->HasClassId());
    const auto early = Make("Anchor", "SHIP");
    EXPECT_FALSE(ZORHandle<ILifting>(early));

    Anchor::MetaObject(); // from here on it is a registered class
    const auto late = Make("Anchor", "SHIP");
    for (const auto& object : {early, late}) {
        EXPECT_STREQ(object->IsA(), "ZORObject");
        EXPECT_EQ(object->IsAKindOf("Anchor"), 0);
        EXPECT_FALSE(ZORHandle<Anchor>(object));
        EXPECT_EQ(object->QueryInterface("Anchor"), nullptr);
        EXPECT_FALSE(ZORHandle<ILifting>(object));
    }
    EXPECT_EQ(Anchor::MetaObject()->GetParent(), ZORBaseUnknown::MetaObject());
    EXPECT_EQ(ZORHandle<ILifting>(ZORHandle<Anchor>::Adopt(new Anchor))->GetLoad(), 900);
}

TEST(ZORObject, ALateTypeNamedLikeTheRootLeavesTheRootAlone)
{
    EXPECT_STREQ(Make("ZORBaseUnknown", "SHIP")->IsA(), "ZORObject");
    EXPECT_EQ(ZORBaseUnknown::MetaObject()->GetParent(), nullptr);
}

TEST(ZORObject, ALateTypeNamedLikeAnInterfaceIsNoObjectWithThatInterface)
{
    const auto object = Make("ILifting", "SHIP");
    EXPECT_EQ(object->QueryInterface("ILifting"), nullptr);
    EXPECT_FALSE(ZORHandle<ILifting>(object));
}

TEST(ZORObject, AdaptersMadeByHandForAClassAreNotForALateTypeOfItsName)
{
    Anchor::MetaObject();
    const ZORFillDictionary unchecked("Anchor", "ILifting", CreateUnchecked);
    RemoveDictionary("Anchor", "ILifting");
    const ZORFillDictionary alone("Anchor", "ILifting", CreateUnchecked);
    EXPECT_FALSE(ZORHandle<ILifting>(Make("Anchor", "SHIP")));
}

TEST(ZORObject, TheSecondNameCountsOnlyForClassesThatDeriveFromTheAdapter)
{
    Anchor::MetaObject();
    ILifting::MetaObject();
    for (const char* name : {"Anchor", "ILifting", "ZORBaseUnknown"}) {
        const auto object = Make("Winch", name);
        EXPECT_STREQ(object->IsA(), "Winch") << name;
    }
}

TEST(ZORObject, ACopyIsOfTheSameTypeAndHasTheName)
{
    const auto object = Make("Winch", "SHIP");
    object->SetName("left");
    const auto copy = ZORHandle<ZORObject>::Adopt(new ZORObject(*object));
    EXPECT_STREQ(copy->IsA(), "Winch");
    EXPECT_EQ(copy->GetName(), "left");
    EXPECT_FALSE(copy == object);
    const auto other = Make("Windlass", "SHIP");
    *other = *object;
    EXPECT_STREQ(other->IsA(), "Windlass");
    EXPECT_EQ(other->GetName(), "left");
    const ZORObject& itself = *other;
    *other = itself;
    EXPECT_STREQ(other->IsA(), "Windlass");
    EXPECT_EQ(other->GetName(), "left");
}
