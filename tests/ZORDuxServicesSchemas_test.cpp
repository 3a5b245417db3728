// The operations of the services for schemas, containers and the classes behind interfaces.

#include "ZORDuxServices.h"

#include "CapturedOutput.h"
#include "CreateServices.h"
#include "RaisedBy.h"
#include "SchemaSite.h"
#include "Texts.h"
#include "TraceLines.h"
#include "ZORDictionary.h"
#include "ZORDuxServicesMsg.h"
#include "ZORIDuxModel.h"
#include "ZORObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kGood = KW_SCHEMA_GOOD;

// Not of the ZORError family as far as its metaobject says.
class Stranger final : public ZORError
{
    ZOR_DECLARE_CLASS
};
ZOR_IMPLEMENT_CLASS(Stranger, ZORKindImplementation, ZORBaseUnknown)

// Its Throw returns.
class ComingBack final : public ZORInternalError
{
public:
    void Throw(const char*, int) override {}
};

ZORBaseUnknown* CreateNothing(ZORBaseUnknown*)
{
    return nullptr;
}

} // namespace

TEST(LoadSchema, RunsTheCreationFunctionOfALibraryItSearchesFor)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "a/libGood.so");
    TraceLines lines;
    CreateServices()->LoadSchema("Good");
    EXPECT_EQ(VariableOf<int>(path, "creations"), 1);
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::LoadSchema iSchemaName = Good"));
}

TEST(LoadSchema, TellsTheLoadersErrorWithMessageAndHistory)
{
    const SchemaSite site;
    const std::string path = site.Write("a/libText.so", "this is no library\n");
    const CapturedOutput output(STDERR_FILENO);
    const auto missing = RaisedBy([] { CreateServices()->LoadSchema("Foo"); });
    EXPECT_EQ(missing->GetId(), 0x20003U);
    EXPECT_EQ(missing->GetLine(), 120);
    const auto text = RaisedBy([] { CreateServices()->LoadSchema("Text"); });
    EXPECT_EQ(text->GetLine(), 205);
    const std::string history =
        "ZORDuxServicesMsg raised in VirtualServices/KW4TOOLS.m/src/ZORLoadExternalSchema, line ";
    EXPECT_EQ(output.Text(), std::string(missing->GetMessage(1).ConvertToChar()) + "\n" + history +
                                 "120\n" + "Can't open library -->" + path + "reason =" + path +
                                 ": file too short\n" + text->GetMessage(1).ConvertToChar() + "\n" +
                                 history + "205\n");
}

TEST(LoadSchema, LetsWhatTheCreationFunctionRaisesGoOn)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "a/libGood.so");
    ZORIDuxServices_var services = CreateServices();
    services->LoadSchema("Good");
    auto*& onCreation = VariableOf<void (*)()>(path, "onCreation");
    {
        const CapturedOutput output(STDERR_FILENO);
        onCreation = [] { (new ZORInternalError(7))->Throw("SchemaGood", 3); };
        EXPECT_EQ(RaisedBy([&] { services->LoadSchema("Good"); })->GetId(), 7U);
        EXPECT_EQ(output.Text(), "ZORInternalError (0x7) raised in SchemaGood, line 3\n"
                                 "ZORInternalError raised in SchemaGood, line 3\n");
    }
    const CapturedOutput output(STDERR_FILENO);
    onCreation = [] { (new Stranger)->Throw("SchemaGood", 4); };
    EXPECT_EQ(RaisedBy([&] { services->LoadSchema("Good"); })->GetLine(), 4);
    onCreation = [] { throw std::runtime_error("no schema today"); };
    EXPECT_THROW(services->LoadSchema("Good"), std::runtime_error);
    EXPECT_EQ(output.Text(), "");
}

TEST(LoadSchema, ReturnsWhenTheErrorDoesNotRaiseAgain)
{
    const SchemaSite site;
    const std::string path = site.Install(kGood, "a/libGood.so");
    ZORIDuxServices_var services = CreateServices();
    services->LoadSchema("Good");
    VariableOf<void (*)()>(path, "onCreation") = [] { throw ZORRaisedError(new ComingBack); };
    const CapturedOutput output(STDERR_FILENO);
    EXPECT_NO_THROW(services->LoadSchema("Good"));
}

TEST(CreateSimpleContainer, GivesAContainerOverANewModel)
{
    const ZORIDuxServices_var services = CreateServices();
    const ZORIContainer_var container = services->CreateSimpleContainer("Assembly", "AP214");
    ASSERT_TRUE(container);
    const ZORIDuxModel_var model(container);
    ASSERT_TRUE(model);
    EXPECT_EQ(model->GetModelType(), "Assembly");
    EXPECT_EQ(model->GetSchema(), "AP214");
    EXPECT_TRUE(model->GetContainer() == container);
    EXPECT_FALSE(services->CreateSimpleContainer("Assembly", "AP214") == container);
}

TEST(CreateSimpleContainer, TheContainerTakesMembersAndIsTheOnlyOwnerOfItsModel)
{
    ZORIContainer_var container = CreateServices()->CreateSimpleContainer("Assembly", "AP214");
    const auto part = ZORHandle<ZORObject>::Adopt(new ZORObject("Part", nullptr));
    EXPECT_EQ(container->AddMember(part.Get()), 1);
    EXPECT_EQ(container->CountMembers(), 1);
    EXPECT_TRUE(container->GetMember(1) == part);
    EXPECT_EQ(container->RemoveMember(part.Get()), 1);
    EXPECT_EQ(container->CountMembers(), 0);

    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    container = nullptr;
    EXPECT_THAT(lines.Taken(),
                ElementsAre("> ZORDuxModel::~ZORDuxModel", "< ZORDuxModel::~ZORDuxModel"));
}

TEST(CreateSimpleContainer, TakesEmptyNamesAndNamesOfClasses)
{
    for (const char* type : {"", "ZORDuxServices", "ZORIDuxServices", "ZORBaseUnknown"}) {
        const ZORIContainer_var container = CreateServices()->CreateSimpleContainer(type, "");
        ASSERT_TRUE(container) << type;
        EXPECT_EQ(ZORIDuxModel_var(container)->GetModelType(), type);
        EXPECT_EQ(ZORIDuxModel_var(container)->GetSchema(), "");
        EXPECT_FALSE(ZORIDuxServices_var(container)) << type;
    }
}

TEST(CreateSimpleContainer, WritesItsArgumentsAndThoseOfTheModel)
{
    TraceLines lines;
    const ZORIContainer_var container =
        CreateServices()->CreateSimpleContainer("Assembly", "AP214");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::CreateSimpleContainer iModelType = Assembly",
                            "   ZORDuxServices::CreateSimpleContainer iTheSchemaName = AP214",
                            "      ZORDuxModel::ZORDuxModel (iSchema) iType = Assembly",
                            "      ZORDuxModel::ZORDuxModel (iSchema) iSchema = AP214"));
}

TEST(CreateSimpleContainer, RaisesWhenModelsDoNotOfferTheirInterface)
{
    const ZORIDuxServices_var services = CreateServices();
    ASSERT_EQ(RemoveDictionary("ZORDuxModel", "ZORIDuxModel"), 1);
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    const CapturedOutput output(STDERR_FILENO);
    const auto error = RaisedBy([&] { services->CreateSimpleContainer("Assembly", "AP214"); });
    EXPECT_EQ(error->IsAKindOf("ZORDuxServicesMsg"), 1);
    EXPECT_EQ(error->GetId(), 0x20002U);
    EXPECT_STREQ(error->GetParameter(1), "ZORDuxModel");
    EXPECT_STREQ(error->GetParameter(2), "ZORIDuxModel");
    EXPECT_STREQ(error->GetFile(), "VirtualServices/KW4TOOLS.m/src/ZORDuxServices");
    EXPECT_EQ(error->GetLine(), 354);
    EXPECT_EQ(output.Text(), "ZORDuxServicesMsg raised in "
                             "VirtualServices/KW4TOOLS.m/src/ZORDuxServices, line 354\n");
    EXPECT_THAT(lines.Taken(), ::testing::Contains("   < ZORDuxModel::~ZORDuxModel"))
        << "the model is gone";
}

TEST(GetDynamicObjList, ListsTheClassesInTheOrderOfTheirEntriesWithALineEach)
{
    const ZORIDuxServices_var services = CreateServices();
    const ZORFillDictionary b("ClassB", "ITest", CreateNothing);
    const ZORFillDictionary a("ClassA", "ITest", CreateNothing);
    const ZORFillDictionary c("ClassC", "ITest", CreateNothing);
    TraceLines lines;
    EXPECT_THAT(Texts(services->GetDynamicObjList("ITest")),
                ElementsAre("ClassB", "ClassA", "ClassC"));
    const std::string method = "   ZORDuxServices::GetDynamicObjList ";
    EXPECT_THAT(lines.Taken(),
                ElementsAre(method + "iInterfaceName = ITest", method + "ObjectType = ClassB",
                            method + "ObjectType = ClassA", method + "ObjectType = ClassC"));
}

TEST(GetDynamicObjList, TakesChainsOfTwoOneAndNone)
{
    const ZORIDuxServices_var services = CreateServices();
    EXPECT_THAT(Texts(services->GetDynamicObjList("ITest")), IsEmpty());
    EXPECT_THAT(Texts(services->GetDynamicObjList("")), IsEmpty());
    const ZORFillDictionary a("ClassA", "ITest", CreateNothing);
    EXPECT_THAT(Texts(services->GetDynamicObjList("ITest")), ElementsAre("ClassA"));
    const ZORFillDictionary b("ClassB", "ITest", CreateNothing);
    EXPECT_THAT(Texts(services->GetDynamicObjList("ITest")), ElementsAre("ClassA", "ClassB"));
}

TEST(GetDynamicObjList, KnowsTheClassesOfTheLibrary)
{
    const ZORIDuxServices_var services = CreateServices();
    EXPECT_THAT(Texts(services->GetDynamicObjList("ZORIDuxServices")),
                ElementsAre("ZORDuxServices"));
    EXPECT_THAT(Texts(services->GetDynamicObjList("ZORIDuxModel")), ElementsAre("ZORDuxModel"));
}

TEST(GetDynamicObjList, ListsClassesThatDictionaryFilesDeclare)
{
    const ScopedDirectory dictionary;
    dictionary.Write("site.toml", "[[adapter]]\nclass = \"SitePart\"\ninterface = \"IPart\"\n"
                                  "library = \"libSite.so\"\n");
    const ScopedEnvironment path("ZOR_DICTIONARY_PATH", dictionary.Path().string());
    EXPECT_THAT(Texts(CreateServices()->GetDynamicObjList("IPart")), ElementsAre("SitePart"));
}
