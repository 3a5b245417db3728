#include "ZORError.h"

#include "VirtualTable.h"
#include "ZORDuxServicesMsg.h"
#include "ZORInternalError.h"
#include "ZORRaisedError.h"
#include "ZORXHContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>

namespace
{

using ::testing::ElementsAre;

// Lives as long as the test lets it.
class Counted : public ZORInternalError
{
public:
    explicit Counted(int& oAlive) : _Alive(oAlive) { ++_Alive; }
    ~Counted() override { --_Alive; }

private:
    int& _Alive;
};

// Not of the ZORError family as far as its metaobject says.
class Stranger final : public ZORError
{
    ZOR_DECLARE_CLASS
};
ZOR_IMPLEMENT_CLASS(Stranger, ZORKindImplementation, ZORBaseUnknown)

std::string History(ZORError& ioError)
{
    std::ostringstream stream;
    ioError.PrintHistory(stream);
    return stream.str();
}

std::string Message(ZORError& ioError, int iForm)
{
    return ioError.GetMessage(iForm).ConvertToChar();
}

} // namespace

TEST(ZORError, ReachesTheCatcherAsTheSameObject)
{
    auto* const error = new ZORInternalError(7);
    try {
        error->Throw("some/File", 12);
        FAIL() << "Throw came back";
    } catch (const ZORRaisedError& raised) {
        EXPECT_EQ(&raised.Error(), error);
        EXPECT_STREQ(raised.Error().GetFile(), "some/File");
        EXPECT_EQ(raised.Error().GetLine(), 12);
        EXPECT_EQ(raised.Error().GetId(), 7U);
    }
}

TEST(ZORError, IsAStandardException)
{
    try {
        (new ZORInternalError)->SetText("The disk is full.").Throw("some/File", 12);
    } catch (const std::exception& raised) {
        EXPECT_STREQ(raised.what(), "ZORInternalError (0x0): The disk is full.");
    }
}

TEST(ZORError, GoesWithTheLastExceptionThatCarriesIt)
{
    int alive = 0;
    try {
        try {
            (new Counted(alive))->Throw("some/File", 12);
        } catch (const ZORRaisedError& raised) {
            EXPECT_EQ(alive, 1);
            raised.Error().Throw(nullptr, 0);
        }
    } catch (const ZORRaisedError& again) {
        EXPECT_EQ(alive, 1);
        const ZORRaisedError copy(again);
        EXPECT_EQ(&copy.Error(), &again.Error());
    }
    EXPECT_EQ(alive, 0);
}

TEST(ZORError, StaysWithWhoeverTookAReference)
{
    int alive = 0;
    auto* const error = new Counted(alive);
    error->AddRef();
    EXPECT_THROW(error->Throw("some/File", 12), ZORRaisedError);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(error->Release(), 0U);
    EXPECT_EQ(alive, 0);
}

TEST(ZORError, KeepsItsHistoryWhenRaisedAgain)
{
    const ZORHandle<ZORError> error(new ZORInternalError);
    EXPECT_EQ(History(*error), "");
    EXPECT_THROW(error->Throw("first/File", 12), ZORRaisedError);
    EXPECT_THROW(error->Throw(nullptr, 0), ZORRaisedError);
    EXPECT_THROW(error->Throw("second/File", 34), ZORRaisedError);
    EXPECT_EQ(History(*error), "ZORInternalError raised in first/File, line 12\n"
                               "ZORInternalError raised in second/File, line 34\n");
    EXPECT_STREQ(error->GetFile(), "first/File");
    EXPECT_EQ(error->GetLine(), 12);
}

TEST(ZORError, WithoutATextNamesClassFileAndLine)
{
    ZORInternalError error(0x31);
    EXPECT_EQ(Message(error, 0), "ZORInternalError never raised");
    error.Setup("some/File", 12);
    EXPECT_EQ(Message(error, 0), "ZORInternalError raised in some/File, line 12");
    EXPECT_EQ(Message(error, 1), "ZORInternalError (0x31) raised in some/File, line 12");
    error.Setup("another/File", 34);
    EXPECT_EQ(Message(error, 0), "ZORInternalError raised in some/File, line 12");
}

TEST(ZORError, TellsItsTextAloneOrWithItsIdentity)
{
    ZORInternalError error(0x31);
    error.SetText("The disk is full.");
    EXPECT_EQ(Message(error, 0), "The disk is full.");
    EXPECT_EQ(Message(error, 1), "ZORInternalError (0x31): The disk is full.");
    EXPECT_EQ(Message(error, 2), Message(error, 1));
    std::ostringstream stream;
    error.Display(1, stream);
    EXPECT_EQ(stream.str(), "ZORInternalError (0x31): The disk is full.\n");
}

TEST(ZORError, AnEmptyTextIsTakenAway)
{
    ZORInternalError error;
    error.SetText("one").SetText("").Setup("some/File", 3);
    EXPECT_EQ(Message(error, 0), "ZORInternalError raised in some/File, line 3");
}

TEST(ZORError, AClonedErrorIsOneOfItsOwn)
{
    ZORDuxServicesMsg error(0x20002);
    error.SetParameters(2, "Engine", "IPowered").Setup("some/File", 12);
    const ZORHandle<ZORError> clone(error.CloneSelf());
    clone->Release();
    EXPECT_STREQ(clone->IsA(), "ZORDuxServicesMsg");
    EXPECT_EQ(clone->GetId(), 0x20002U);
    EXPECT_EQ(Message(*clone, 0), Message(error, 0));
    EXPECT_EQ(History(*clone), History(error));
    ZORInternalError internal;
    const ZORHandle<ZORError> internalClone(internal.CloneSelf());
    internalClone->Release();
    EXPECT_STREQ(internalClone->IsA(), "ZORInternalError");
    error.SetText("changed");
    EXPECT_NE(Message(*clone, 0), Message(error, 0));
}

TEST(ZORError, TheBaseClassClonesItselfToo)
{
    ZORError error(5);
    error.SetText("one").Setup("some/File", 3);
    const auto clone = ZORHandle<ZORError>::Adopt(error.CloneSelf());
    EXPECT_STREQ(clone->IsA(), "ZORError");
    EXPECT_EQ(clone->GetId(), 5U);
    EXPECT_EQ(Message(*clone, 0), "one");
    EXPECT_EQ(History(*clone), History(error));
}

TEST(ZORError, HasNoPlaceBeforeItIsRaised)
{
    ZORInternalError error;
    EXPECT_EQ(error.GetFile(), nullptr);
    EXPECT_EQ(error.GetLine(), 0);
    EXPECT_EQ(Message(error, 0), "ZORInternalError never raised");
    EXPECT_EQ(History(error), "");
}

TEST(ZORError, TakesParametersByNumber)
{
    ZORInternalError error;
    error.SetParameters(3, "one", nullptr, "three");
    EXPECT_EQ(error.GetParameter(0), nullptr);
    EXPECT_STREQ(error.GetParameter(1), "one");
    EXPECT_STREQ(error.GetParameter(2), "");
    EXPECT_STREQ(error.GetParameter(3), "three");
    EXPECT_EQ(error.GetParameter(4), nullptr);
    error.SetParameters(0);
    EXPECT_EQ(error.GetParameter(1), nullptr);
}

TEST(ZORRaisedError, GivesOneTextThatLivesAsLongAsItDoes)
{
    auto* const error = new ZORInternalError;
    error->SetText("A text that is too long to be kept inside of a string object.");
    const ZORRaisedError raised(error);
    const char* const first = raised.what();
    EXPECT_EQ(raised.what(), first);
    EXPECT_STREQ(first, "ZORInternalError (0x0): A text that is too long to be kept inside of a "
                        "string object.");
}

TEST(ZORError, AnObjectOutsideTheFamilySaysSo)
{
    Stranger stranger;
    EXPECT_EQ(stranger.IsAKindOf(ZORError::ClassName()), 0);
    ZORDuxServicesMsg message;
    EXPECT_EQ(message.IsAKindOf(ZORError::ClassName()), 1);
    EXPECT_EQ(message.IsAKindOf(ZORInternalError::ClassName()), 1);
    EXPECT_EQ(message.IsAKindOf("ZORDUXNLSError"), 0);
}

TEST(ZORError, KeepsTheOrderOfItsVirtualOperations)
{
    ZORInternalError error;
    const std::vector<std::string> table = VirtualTable(static_cast<ZORError*>(&error), 18);
    EXPECT_THAT((std::vector<std::string>(table.begin() + 12, table.end())),
                ElementsAre("ZORError::GetMessage(int)", "ZORError::Display(int, std::ostream&)",
                            "ZORError::PrintHistory(std::ostream&)",
                            "ZORError::Throw(char const*, int)", "ZORInternalError::CloneSelf()",
                            "ZORError::GetErrorTable(unsigned int*, ZORErrDsc const**)"));
}

TEST(ZORDuxServicesMsg, HasATextForEachOfItsIdentifiers)
{
    struct Row {
        unsigned int id;
        const char* text;
    };
    for (const Row& row :
         {Row{0x20002, "The component A does not offer the interface B."},
          Row{0x20003, "The schema library A was not found or cannot be loaded."},
          Row{0x20004, "The schema library A does not define the creation function B."}}) {
        ZORDuxServicesMsg error(row.id);
        error.SetParameters(2, "A", "B");
        EXPECT_EQ(Message(error, 0), row.text);
    }
}

TEST(ZORDuxServicesMsg, ListsItsThreeTexts)
{
    unsigned int count = 0;
    const ZORErrDsc* table = nullptr;
    ZORDuxServicesMsg().GetErrorTable(&count, &table);
    ASSERT_EQ(count, 3U);
    EXPECT_EQ(table[0].id, 0x20002U);
    EXPECT_EQ(table[2].id, 0x20004U);
}

TEST(ZORDuxServicesMsg, FillsThePlacesOfItsTextOnce)
{
    ZORDuxServicesMsg error(0x20002);
    error.SetParameters(2, "{2}", "IPowered");
    EXPECT_EQ(Message(error, 0), "The component {2} does not offer the interface IPowered.");
    error.SetParameters(1, "Engine");
    EXPECT_EQ(Message(error, 0), "The component Engine does not offer the interface {2}.");
}

TEST(ZORXHContext, HoldsACaughtErrorUntilItIsFlushedOrCloses)
{
    int alive = 0;
    {
        ZORXHContext context;
        EXPECT_EQ(ZORXHContext::GetDepth(), 1);
        try {
            (new Counted(alive))->Throw("some/File", 12);
        } catch (const ZORRaisedError& raised) {
            context.Catch(raised);
        }
        EXPECT_EQ(alive, 1);
        context.Flush();
        EXPECT_EQ(alive, 0);
        {
            ZORXHContext inner;
            EXPECT_EQ(ZORXHContext::GetDepth(), 2);
            inner.Catch(ZORRaisedError(new Counted(alive)));
            EXPECT_EQ(alive, 1);
        }
        EXPECT_EQ(alive, 0);
    }
    EXPECT_EQ(ZORXHContext::GetDepth(), 0);
}

TEST(ZORXHContext, CountsForEachThreadByItself)
{
    const ZORXHContext context;
    int depth = -1;
    std::thread([&depth] { depth = ZORXHContext::GetDepth(); }).join();
    EXPECT_EQ(depth, 0);
}
