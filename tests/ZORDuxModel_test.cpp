#include "ZORDuxModel.h"

#include "TraceLines.h"
#include "VirtualTable.h"
#include "ZORTie.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using Model = ZORHandle<ZORDuxModel>;

Model Make(const char* iType, const ZORUnicodeString& iSchema)
{
    return Model::Adopt(new ZORDuxModel(iType, iSchema));
}

} // namespace

TEST(ZORDuxModel, KeepsItsTypeAndItsSchema)
{
    const Model model = Make("Assembly", "AP214");
    EXPECT_EQ(model->GetModelType(), "Assembly");
    EXPECT_EQ(model->GetSchema(), "AP214");
    EXPECT_EQ(Make("Assembly", "")->GetSchema(), "");
    EXPECT_EQ(Make("", "AP214")->GetModelType(), "");
}

TEST(ZORDuxModel, ANullTypeIsTheEmptyText)
{
    EXPECT_EQ(Make(nullptr, "AP214")->GetModelType(), "");
    EXPECT_STREQ(Make(nullptr, "AP214")->IsA(), "ZORDuxModel");
    const Model model = Model::Adopt(new ZORDuxModel(nullptr));
    EXPECT_EQ(model->GetModelType(), "ModelSDM");
}

TEST(ZORDuxModel, WithoutASchemaItIsModelSDMWithOneBlank)
{
    const Model model = Model::Adopt(new ZORDuxModel("Assembly"));
    EXPECT_EQ(model->GetModelType(), "ModelSDM");
    EXPECT_EQ(model->GetSchema(), " ");
}

TEST(ZORDuxModel, ACopyHasTheSameTypeAndSchema)
{
    const Model model = Make("Assembly", "AP214");
    const Model copy = Model::Adopt(new ZORDuxModel(*model));
    EXPECT_EQ(copy->GetModelType(), "Assembly");
    EXPECT_EQ(copy->GetSchema(), "AP214");
    EXPECT_STREQ(copy->IsA(), "ZORDuxModel");
    EXPECT_FALSE(copy == model);
}

TEST(ZORDuxModel, RegistersItsClassOnTheFirstCallOnly)
{
    const ZORMetaClass* const known = QueryMetaObject("ZORDuxModel");
    ASSERT_NE(known, nullptr) << "its adapters are in the dictionary";
    EXPECT_FALSE(known->HasClassId());
    ZORDuxModel::InitMeta();
    ZORMetaClass* const meta = ZORDuxModel::MetaObject();
    EXPECT_EQ(meta, known);
    ASSERT_TRUE(meta->HasClassId());
    const GUID identifier = meta->GetClassId();
    EXPECT_EQ(QueryMetaObject(identifier), meta);
    EXPECT_EQ(meta->GetKind(), 1);
    EXPECT_EQ(meta->GetParent(), ZORImplementationAdapter::MetaObject());

    meta->SetKind(ZORKindUnknown); // what a second registration would set again
    ZORDuxModel::InitMeta();
    EXPECT_EQ(ZORDuxModel::MetaObject(), meta);
    EXPECT_EQ(meta->GetKind(), ZORKindUnknown);
    EXPECT_EQ(ZORDuxModel::ClassId(), identifier);
}

TEST(ZORDuxModel, IsOfItsClassWhateverItsType)
{
    for (const char* type : {"Assembly", "ZORDuxServices", "ZORObject", ""}) {
        const Model model = Make(type, "AP214");
        EXPECT_EQ(model->GetMetaObject(), ZORDuxModel::MetaObject()) << type;
        EXPECT_STREQ(model->IsA(), "ZORDuxModel");
        for (const char* name :
             {"ZORDuxModel", "ZORImplementationAdapter", "ZOREventSubscriber", "ZORBaseUnknown"})
            EXPECT_EQ(model->IsAKindOf(name), 1) << name;
        EXPECT_EQ(model->IsAKindOf("ZORDuxServices"), 0);
    }
    EXPECT_STREQ(ZORDuxModel::ClassName(), "ZORDuxModel");
}

TEST(ZORDuxModel, IsMadeByNoFactory)
{
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ZORDuxModel::CreateItself(), nullptr);
        EXPECT_EQ(CreateClassZORDuxModel(), nullptr);
    }
}

TEST(ZORDuxModel, TracesItsArgumentsAndItsValues)
{
    TraceLines lines;
    const Model model = Make("Assembly", "AP214");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxModel::ZORDuxModel (iSchema) iType = Assembly",
                            "   ZORDuxModel::ZORDuxModel (iSchema) iSchema = AP214"));
    model->GetModelType();
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxModel::GetModelType _ModelType = Assembly"));
    model->GetSchema();
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxModel::GetSchema _Schema = AP214"));
    Make(nullptr, "");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxModel::ZORDuxModel (iSchema) iType = ",
                                           "   ZORDuxModel::ZORDuxModel (iSchema) iSchema = "));
}

TEST(ZORDuxModel, WithoutASchemaItWritesNothing)
{
    TraceLines lines;
    const Model model = Model::Adopt(new ZORDuxModel("Assembly"));
    EXPECT_THAT(lines.Taken(), IsEmpty());
}

TEST(ZORDuxModel, WritesNothingWithTheTraceOff)
{
    TraceLines lines(41);
    Make("Assembly", "AP214")->GetSchema();
    EXPECT_THAT(lines.Taken(), IsEmpty());
}

TEST(ZORDuxModel, OpensAScopeForEachOperation)
{
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    Model model = Model::Adopt(new ZORDuxModel("Assembly"));
    EXPECT_THAT(lines.Taken(),
                ElementsAre("> ZORDuxModel::ZORDuxModel", "< ZORDuxModel::ZORDuxModel"));
    model = nullptr;
    EXPECT_THAT(lines.Taken(),
                ElementsAre("> ZORDuxModel::~ZORDuxModel", "< ZORDuxModel::~ZORDuxModel"));
}

TEST(ZORDuxModel, SurvivesATraceThatRaisesWhileItGoes)
{
    TraceLines lines;
    Model model = Make("Assembly", "AP214");
    lines.Taken();
    ZORPSNTrace::SetCallLines(true);
    lines.onLine = [](const std::string&) { throw 1; };
    model = nullptr;
    lines.onLine = nullptr;
    EXPECT_THAT(lines.Taken(), ElementsAre("> ZORDuxModel::~ZORDuxModel"));
}

TEST(ZORDuxModel, KeepsTheOrderOfItsVirtualOperations)
{
    const std::string manager = "(ZORCallbackManager*";
    const std::string byName = manager + ", char const*";
    const std::string byIdentifier = manager + ", GUID const&";
    const std::string function =
        ", void (*)(ZORBaseUnknown*, char const*, ZORNotification*, void*), void*)";
    const std::vector<std::string> operations = {
        "ZORBaseUnknown::QueryInterface(GUID const&, void**)",
        "ZORBaseUnknown::AddRef()",
        "ZORBaseUnknown::Release()",
        "ZORDuxModel::~ZORDuxModel()", // a destructor takes two entries
        "ZORDuxModel::~ZORDuxModel()",
        "ZORObject::GetMetaObject() const",
        "ZORObject::IsA() const",
        "ZORObject::IsAKindOf(char const*) const",
        "ZORBaseUnknown::IsNull() const",
        "ZORBaseUnknown::IsEqual(ZORBaseUnknown const*) const",
        "ZORBaseUnknown::SetImpl(ZORBaseUnknown*)",
        "ZORBaseUnknown::QueryInterface(char const*) const",
        "ZOREventSubscriber::AddCallback" + byName + function,
        "ZOREventSubscriber::RemoveCallback" + manager + ", unsigned long)",
        "ZOREventSubscriber::RemoveCallbacksOn" + byName + ")",
        "ZOREventSubscriber::RemoveSubscriberCallbacks" + manager + ")",
        "ZOREventSubscriber::GetCallbackManager()",
        "ZOREventSubscriber::AddSubscription" + byName + ", char const*" + function,
        "ZOREventSubscriber::AddSubscription" + byIdentifier + ", char const*" + function,
        "ZOREventSubscriber::RemoveSubscriptionsOn" + byName + ", char const*)",
        "ZOREventSubscriber::RemoveSubscriptionsOn" + byIdentifier + ", char const*)",
        "ZOREventSubscriber::RemoveInterfaceSubscriptions" + byName + ")",
        "ZOREventSubscriber::RemoveInterfaceSubscriptions" + byIdentifier + ")",
        "ZORImplementationAdapter::AddInverseLink(ZORImplementationAdapter*)",
        "ZORImplementationAdapter::RemoveInverseLink(ZORImplementationAdapter*)",
        "ZORImplementationAdapter::GetInverseLinks() const",
        "ZORImplementationAdapter::GetName() const",
        "ZORImplementationAdapter::GetName_B() const",
        "ZORImplementationAdapter::GetSymbolicLink() const",
        "ZORImplementationAdapter::GetIdentifier() const",
    };
    constexpr std::size_t kOperations = 37 + 1;
    const std::vector<std::string> table =
        VirtualTable(Make("Assembly", "AP214").Get(), kOperations);
    for (std::size_t i = 0; i < operations.size(); ++i)
        EXPECT_EQ(table[i], operations[i]) << i;
    // Some of the others do the same, and compilers make one function of them.
    for (std::size_t i = operations.size(); i < kOperations; ++i)
        EXPECT_THAT(table[i], StartsWith("ZORImplementationAdapter::")) << i;
    EXPECT_EQ(SlotOf(&ZORDuxModel::GetIdentifier), 29U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::GetDocument), 30U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::GetLocatorType), 31U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::GetAdditionalInfos), 32U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::ListSupportedAreasIdentifier), 33U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::IsAFilledArea), 34U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::FillArea), 35U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::GetStoredName), 36U);
    EXPECT_EQ(SlotOf(&ZORDuxModel::ExternalBindPointedObjects), kOperations - 1);
}

TEST(TIEZORIDuxModelZORDuxModel, ShowsTheModel)
{
    const Model model = Make("Assembly", "AP214");
    const ZORIDuxModel_var face(model);
    ASSERT_TRUE(face);
    EXPECT_TRUE(face == model);
    EXPECT_EQ(face->GetModelType(), "Assembly");
    EXPECT_EQ(face->GetSchema(), "AP214");
    const ZORMetaClass* const meta = face->GetMetaObject();
    EXPECT_STREQ(meta->GetClassName(), "ZORIDuxModel");
    EXPECT_EQ(meta->GetParent(), ZORIDuxModel::MetaObject());
    EXPECT_EQ(meta->GetImplementation(), ZORDuxModel::MetaObject());
    EXPECT_EQ(meta->GetKind(), ZORKindTie);
}

TEST(TIEZORIDuxModelZORDuxModel, GivesTheSameContainerAtEveryCall)
{
    const ZORIDuxModel_var model(Make("Assembly", "AP214"));
    const ZORIContainer_var container = model->GetContainer();
    ASSERT_TRUE(container);
    EXPECT_EQ(model->GetContainer().Get(), container.Get());
    EXPECT_EQ(ZORIContainer_var(model).Get(), container.Get());
    EXPECT_FALSE(ZORIDuxModel_var(Make("Assembly", "AP214"))->GetContainer() == container);
}

TEST(TIEZORIDuxModelZORDuxModel, GivesNoContainerWhenItsEntryIsWithdrawn)
{
    const ZORIDuxModel_var model(Make("Assembly", "AP214"));
    ASSERT_EQ(RemoveDictionary("ZORDuxModel", "ZORIContainer"), 1);
    EXPECT_FALSE(model->GetContainer());
}

TEST(ZORIDuxModel, ItsFirstOperationGivesTheContainer)
{
    EXPECT_EQ(SlotOf(&ZORIDuxModel::GetContainer), 12U);
    EXPECT_EQ(SlotOf(&ZORIDuxModel::GetModelType), 13U);
    EXPECT_EQ(SlotOf(&ZORIDuxModel::GetSchema), 14U);
    EXPECT_EQ(ZORIDuxModel::MetaObject()->GetKind(), ZORKindInterface);
}
