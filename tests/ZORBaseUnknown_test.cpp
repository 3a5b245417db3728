#include "ZORBaseUnknown.h"

#include "CountedAllocations.h"
#include "VirtualTable.h"
#include "ZORHandle.h"
#include "ZORTie.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

namespace
{

using ::testing::ElementsAre;

class Engine : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    explicit Engine(int* oAlive = nullptr) : _Alive(oAlive)
    {
        if (_Alive)
            ++*_Alive;
    }
    ~Engine() override
    {
        if (_Alive)
            --*_Alive;
    }
    int Power() const { return 90; }

private:
    int* _Alive;
};
ZOR_IMPLEMENT_CLASS(Engine, ZORKindImplementation, ZORBaseUnknown)

class TurboEngine final : public Engine
{
    ZOR_DECLARE_CLASS
};
ZOR_IMPLEMENT_CLASS(TurboEngine, ZORKindImplementation, Engine)

class IPowered : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    virtual int GetPower() = 0;
};
ZOR_IMPLEMENT_CLASS(IPowered, ZORKindInterface, ZORBaseUnknown)

class INamed : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    virtual const char* GetName() = 0;
};
ZOR_IMPLEMENT_CLASS(INamed, ZORKindInterface, ZORBaseUnknown)

class TIEIPoweredEngine final : public IPowered
{
    ZOR_DECLARE_TIE(IPowered, Engine)
public:
    int GetPower() override { return Self()->Power(); }
};
ZORBaseUnknown* CreateTIEIPoweredEngine(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(IPowered, Engine, ZORKindTie)

class TIEINamedEngine final : public INamed
{
    ZOR_DECLARE_TIE(INamed, Engine)
public:
    const char* GetName() override { return "engine"; }
};
ZORBaseUnknown* CreateTIEINamedEngine(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(INamed, Engine, ZORKindTie)

const ZORFillDictionary powered("Engine", "IPowered", CreateTIEIPoweredEngine);
const ZORFillDictionary named("Engine", "INamed", CreateTIEINamedEngine);

unsigned int CountOf(ZORBaseUnknown& ioObject)
{
    ioObject.AddRef();
    return ioObject.Release();
}

} // namespace

TEST(ZORBaseUnknown, BeginsWithOneReferenceAndGoesWithTheLast)
{
    int alive = 0;
    auto* const engine = new Engine(&alive);
    EXPECT_EQ(engine->AddRef(), 2U);
    EXPECT_EQ(engine->Release(), 1U);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(engine->Release(), 0U);
    EXPECT_EQ(alive, 0);
}

TEST(ZORBaseUnknown, KeepsTheOrderOfItsVirtualOperations)
{
    Engine engine;
    EXPECT_THAT(VirtualTable(static_cast<ZORBaseUnknown*>(&engine), 12),
                ElementsAre("ZORBaseUnknown::QueryInterface(GUID const&, void**)",
                            "ZORBaseUnknown::AddRef()", "ZORBaseUnknown::Release()",
                            "(anonymous namespace)::Engine::~Engine()",
                            "(anonymous namespace)::Engine::~Engine()",
                            "(anonymous namespace)::Engine::GetMetaObject() const",
                            "(anonymous namespace)::Engine::IsA() const",
                            "(anonymous namespace)::Engine::IsAKindOf(char const*) const",
                            "ZORBaseUnknown::IsNull() const",
                            "ZORBaseUnknown::IsEqual(ZORBaseUnknown const*) const",
                            "ZORBaseUnknown::SetImpl(ZORBaseUnknown*)",
                            "ZORBaseUnknown::QueryInterface(char const*) const"));
    EXPECT_EQ(SlotOf(&IPowered::GetPower), 12U);
}

TEST(ZORBaseUnknown, KnowsItsClassAndTheAncestorsOfIt)
{
    TurboEngine engine;
    EXPECT_STREQ(engine.IsA(), "TurboEngine");
    EXPECT_EQ(engine.GetMetaObject(), TurboEngine::MetaObject());
    EXPECT_EQ(engine.IsAKindOf("TurboEngine"), 1);
    EXPECT_EQ(engine.IsAKindOf("Engine"), 1);
    EXPECT_EQ(engine.IsAKindOf("ZORBaseUnknown"), 1);
    EXPECT_EQ(engine.IsAKindOf("Turbo"), 0);
    EXPECT_EQ(engine.IsAKindOf(nullptr), 0);
    EXPECT_EQ(engine.IsNull(), 0);
}

TEST(ZORBaseUnknown, AnswersAQueryByNameWithAReferenceOfItsOwn)
{
    Engine engine;
    ZORBaseUnknown* const found = engine.QueryInterface("IPowered");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(static_cast<IPowered*>(found)->GetPower(), 90);
    EXPECT_EQ(CountOf(engine), 2U);
    found->Release();
    EXPECT_EQ(CountOf(engine), 1U);
}

TEST(ZORBaseUnknown, AnswersAQueryByIdentifierWithAReferenceOfItsOwn)
{
    Engine engine;
    void* found = nullptr;
    EXPECT_EQ(engine.QueryInterface(IPowered::ClassId(), &found), ZORInterfaceFound);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(static_cast<IPowered*>(found)->GetPower(), 90);
    EXPECT_EQ(CountOf(engine), 2U);
    static_cast<IPowered*>(found)->Release();
}

TEST(ZORBaseUnknown, GivesNullForAnUnknownInterfaceAndLeavesTheCount)
{
    Engine engine;
    EXPECT_EQ(engine.QueryInterface("INeverHeardOf"), nullptr);
    EXPECT_EQ(engine.QueryInterface(static_cast<const char*>(nullptr)), nullptr);
    void* found = &engine;
    EXPECT_EQ(engine.QueryInterface(fct_CreateCLSID(), &found), ZORNoInterface);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(engine.QueryInterface(IPowered::ClassId(), nullptr), ZORNoInterface);
    EXPECT_EQ(CountOf(engine), 1U);
}

TEST(ZORBaseUnknown, MakesAnAdapterOnceAndKeepsItForLaterQueries)
{
    Engine engine;
    ZORBaseUnknown* const first = engine.QueryInterface("IPowered");
    ZORBaseUnknown* const second = engine.QueryInterface("IPowered");
    EXPECT_EQ(first, second);
    first->Release();
    second->Release();
    EXPECT_EQ(CountOf(engine), 1U);
}

TEST(ZORBaseUnknown, AllocatesNothingForAQueryOnceTheAdapterIsThere)
{
    Engine engine;
    const ZORHandle<IPowered> kept(&engine);
    const ZORHandle<INamed> other(&engine);
    const CountedAllocations allocations;
    const std::size_t memory = mallinfo2().uordblks;
    {
        const ZORHandle<IPowered> again(&engine);
        const ZORHandle<INamed> fromAdapter(again);
        const ZORHandle<Engine> object(fromAdapter);
        const auto byName = ZORBaseUnknown_var::Adopt(engine.QueryInterface("IPowered"));
        EXPECT_EQ(again.Get(), kept.Get());
        EXPECT_EQ(fromAdapter.Get(), other.Get());
        EXPECT_EQ(object.Get(), &engine);
        EXPECT_EQ(byName.Get(), kept.Get());
        EXPECT_EQ(mallinfo2().uordblks, memory); // components come from malloc
    }
    EXPECT_EQ(allocations.Count(), 0);
}

TEST(ZORBaseUnknown, FindsTheAdapterOfAParentClass)
{
    TurboEngine engine;
    const ZORHandle<IPowered> found(&engine);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->GetPower(), 90);
}

TEST(ZORBaseUnknown, IsItsOwnAnswerToAQueryForItsClassAndAncestors)
{
    TurboEngine engine;
    for (const char* name : {"TurboEngine", "Engine", "ZORBaseUnknown"}) {
        ZORBaseUnknown* const found = engine.QueryInterface(name);
        EXPECT_EQ(found, &engine) << name;
        found->Release();
    }
}

TEST(ZORBaseUnknown, AnAdapterAnswersForItsObjectAndKeepsItAlive)
{
    int alive = 0;
    auto* const engine = new Engine(&alive);
    ZORHandle<IPowered> power(static_cast<ZORBaseUnknown*>(engine));
    engine->Release();
    EXPECT_EQ(alive, 1);

    ZORHandle<INamed> name(power);
    ASSERT_TRUE(name);
    EXPECT_STREQ(name->GetName(), "engine");
    power = nullptr;
    EXPECT_EQ(alive, 1);
    name = nullptr;
    EXPECT_EQ(alive, 0);
}

TEST(ZORBaseUnknown, IsEqualToWhateverLeadsToTheSameObject)
{
    Engine engine;
    Engine other;
    const ZORHandle<IPowered> power(&engine);
    const ZORHandle<INamed> name(power);
    EXPECT_EQ(engine.IsEqual(&engine), 1);
    EXPECT_EQ(engine.IsEqual(power.Get()), 1);
    EXPECT_EQ(power->IsEqual(&engine), 1);
    EXPECT_EQ(power->IsEqual(name.Get()), 1);
    EXPECT_EQ(engine.IsEqual(&other), 0);
    EXPECT_EQ(power->IsEqual(&other), 0);
    EXPECT_EQ(engine.IsEqual(nullptr), 0);
}

TEST(ZORBaseUnknown, ACopyHasACountAndAdaptersOfItsOwn)
{
    Engine engine;
    const ZORHandle<IPowered> power(&engine);
    Engine copy(engine);
    EXPECT_EQ(CountOf(engine), 2U);
    EXPECT_EQ(CountOf(copy), 1U);
    EXPECT_EQ(copy.IsEqual(&engine), 0);
    copy = engine;
    EXPECT_EQ(CountOf(copy), 1U);
}

TEST(ZORTie, TheMetaObjectOfAnAdapterNamesInterfaceObjectAndKind)
{
    Engine engine;
    const ZORHandle<IPowered> power(&engine);
    const ZORMetaClass* const meta = power->GetMetaObject();
    EXPECT_STREQ(meta->GetClassName(), "IPowered");
    EXPECT_EQ(meta->GetParent(), IPowered::MetaObject());
    EXPECT_EQ(meta->GetImplementation(), Engine::MetaObject());
    EXPECT_EQ(meta->GetKind(), ZORKindTie);
    EXPECT_STREQ(power->IsA(), "IPowered");
    EXPECT_EQ(power->IsAKindOf("IPowered"), 1);
    EXPECT_EQ(power->IsAKindOf("ZORBaseUnknown"), 1);
    EXPECT_EQ(power->IsAKindOf("Engine"), 0);
}

TEST(ZORTie, ACreatorMakesABoundAdapterAndNothingForNoObject)
{
    Engine engine;
    ZORBaseUnknown* const adapter = CreateTIEIPoweredEngine(&engine);
    ASSERT_NE(adapter, nullptr);
    EXPECT_EQ(adapter->IsEqual(&engine), 1);
    EXPECT_EQ(CountOf(engine), 2U);
    adapter->Release();
    EXPECT_EQ(CountOf(engine), 1U);
    EXPECT_EQ(CreateTIEIPoweredEngine(nullptr), nullptr);
}

TEST(ZORHandle, HoldsOneReferenceAndGivesItBack)
{
    Engine engine;
    {
        const ZORBaseUnknown_var first(&engine);
        EXPECT_EQ(CountOf(engine), 2U);
        const ZORBaseUnknown_var second(first);
        EXPECT_EQ(CountOf(engine), 3U);
        ZORBaseUnknown_var third;
        third = second;
        EXPECT_EQ(CountOf(engine), 4U);
        const ZORBaseUnknown_var fourth(std::move(third));
        EXPECT_EQ(CountOf(engine), 4U);
        third = nullptr;
    }
    EXPECT_EQ(CountOf(engine), 1U);
}

TEST(ZORHandle, IsNullForNoComponentAndForOneWithoutTheInterface)
{
    const ZORHandle<IPowered> none(static_cast<ZORBaseUnknown*>(nullptr));
    EXPECT_FALSE(none);
    const ZORBaseUnknown_var object;
    EXPECT_TRUE(none == object);
    Engine engine;
    const ZORHandle<IPowered> power(&engine);
    EXPECT_TRUE(power != object);
    EXPECT_TRUE(power == ZORHandle<INamed>(&engine));
}
