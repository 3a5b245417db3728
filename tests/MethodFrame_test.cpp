// The frame that all operations of the services share: what they trace, and what they tell of an
// error on its way to the caller. Errors are raised by the trace's sink while a line of the guarded
// body is written.

#include "CreateServices.h"

#include "CapturedOutput.h"
#include "SettingsSite.h"
#include "TraceLines.h"
#include "ZORDUXNLSError.h"
#include "ZORDuxServices.h"
#include "ZORDuxServicesMsg.h"
#include "ZORRaisedError.h"
#include "ZORXHContext.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <stdexcept>
#include <unistd.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
    void Throw(const char* iFile, int iLine) override
    {
        thrownPlain = thrownPlain || (!iFile && iLine == 0);
    }
    bool thrownPlain = false;
};

// Says something else when it is displayed.
class Showy final : public ZORInternalError
{
public:
    explicit Showy(int& oAlive) : _Alive(oAlive) { ++_Alive; }
    ~Showy() override { --_Alive; }
    void Display(int, std::ostream& oStream) override { oStream << "show"; }

private:
    int& _Alive;
};

enum class Form { Short, Long };

struct Operation {
    const char* name;
    Form form;
    const char* bodyLine; // part of a line that the guarded body writes
    // Calls the operation; whether the result was empty.
    std::function<bool(ZORDuxServices&)> call;
};

const Operation kOperations[] = {
    {"CreateServices", Form::Long, "> ZORDuxServices::ZORDuxServices",
     [](ZORDuxServices&) { return !CreateServices(); }},
    {"GetSetting", Form::Long,
     "retour = ", [](ZORDuxServices& s) { return s.GetSetting("A", "f").IsEmpty(); }},
    {"PutSetting", Form::Short, "PutSetting OK",
     [](ZORDuxServices& s) { return s.PutSetting("B", "2", "f"), true; }},
    {"ListOfSettingVariables", Form::Short, "ListOfSettingVariables Name = ",
     [](ZORDuxServices& s) { return s.ListOfSettingVariables("f").Size() == 0; }},
    {"GetIdentifier", Form::Short,
     "OutUuid = ", [](ZORDuxServices& s) { return s.GetIdentifier().IsEmpty(); }},
    {"CreateSimpleContainer", Form::Long, "> ZORDuxModel::ZORDuxModel (iSchema)",
     [](ZORDuxServices& s) { return !s.CreateSimpleContainer("Assembly", "AP214"); }},
    {"CheckFile", Form::Short, "Read Mode",
     [](ZORDuxServices& s) { return s.CheckFile("/tmp").exists == 0; }},
    {"SearchPath", Form::Short, "SearchPath RelativeName = ",
     [](ZORDuxServices& s) { return s.SearchPath("/tmp/").IsEmpty(); }},
    {"WriteStream", Form::Short, "Open Stream",
     [](ZORDuxServices& s) { return s.WriteStream({}, "/dev/null") == 0; }},
    {"ReadStream", Form::Short, "Read Stream",
     [](ZORDuxServices& s) { return s.ReadStream("/proc/self/status").Size() == 0; }},
    {"SeekEnv", Form::Short,
     " Path = ", [](ZORDuxServices& s) { return s.SeekEnv("/tmp").IsEmpty(); }},
};

// Runs an operation that meets `iError` in its body, and gives what is told on standard error.
std::string Meet(const Operation& iOperation, const std::function<void()>& iRaise,
                 const std::function<void(const std::function<bool()>&)>& iExpect)
{
    const SettingsSite site;
    site.Write("f", "A = \"1\"\n");
    ZORDuxServices services;
    TraceLines lines;
    ZORPSNTrace::SetCallLines(true);
    bool raised = false;
    lines.onLine = [&](const std::string& line) {
        if (!raised && line.find(iOperation.bodyLine) != std::string::npos) {
            raised = true;
            iRaise();
        }
    };
    const CapturedOutput output(STDERR_FILENO);
    iExpect([&] { return iOperation.call(services); });
    EXPECT_TRUE(raised) << "no line with " << iOperation.bodyLine;
    return output.Text();
}

// The same, with the error arriving at the caller as that very object.
std::string MeetAndCatch(const Operation& iOperation, ZORError* iError)
{
    return Meet(
        iOperation, [&] { iError->Throw("some/File", 12); },
        [&](const std::function<bool()>& call) {
            try {
                call();
                ADD_FAILURE() << "nothing was raised";
            } catch (const ZORRaisedError& raised) {
                EXPECT_EQ(&raised.Error(), iError);
                EXPECT_STREQ(raised.Error().GetFile(), "some/File");
                EXPECT_EQ(raised.Error().GetLine(), 12);
            }
        });
}

} // namespace

TEST(MethodFrame, TellsAnErrorWithMessageAndHistoryAndLetsItGoOn)
{
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        EXPECT_EQ(MeetAndCatch(operation, new ZORDUXNLSError),
                  "ZORDUXNLSError (0x0) raised in some/File, line 12\n"
                  "ZORDUXNLSError raised in some/File, line 12\n");
        auto* const withText = new ZORInternalError(3);
        withText->SetText("The disk is full.");
        EXPECT_EQ(MeetAndCatch(operation, withText),
                  "ZORInternalError (0x3): The disk is full.\n"
                  "ZORInternalError raised in some/File, line 12\n");
    }
}

TEST(MethodFrame, TellsTheHistoryAloneOfAServicesMessageInTheLongForm)
{
    const std::string message =
        "ZORDuxServicesMsg (0x20002): The component A does not offer the interface B.\n";
    const std::string history = "ZORDuxServicesMsg raised in some/File, line 12\n";
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        auto* const error = new ZORDuxServicesMsg(0x20002);
        error->SetParameters(2, "A", "B");
        EXPECT_EQ(MeetAndCatch(operation, error),
                  operation.form == Form::Long ? history : message + history);
    }
}

TEST(MethodFrame, TellsNothingOfAnObjectOutsideTheFamily)
{
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        EXPECT_EQ(MeetAndCatch(operation, new Stranger), "");
    }
}

TEST(MethodFrame, TellsTheMessageHoweverTheErrorDisplaysItselfAndKeepsNothing)
{
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        int alive = 0;
        EXPECT_EQ(MeetAndCatch(operation, new Showy(alive)),
                  "ZORInternalError (0x0) raised in some/File, line 12\n"
                  "ZORInternalError raised in some/File, line 12\n");
        EXPECT_EQ(alive, 0);
        EXPECT_EQ(ZORXHContext::GetDepth(), 0);
    }
}

TEST(MethodFrame, GivesTheEmptyResultShouldThrowComeBack)
{
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        const ZORHandle<ZORError> error(new ComingBack);
        const std::string told = Meet(
            operation, [&] { throw ZORRaisedError(error.Get()); },
            [&](const std::function<bool()>& call) { EXPECT_TRUE(call()); });
        EXPECT_TRUE(static_cast<ComingBack&>(*error).thrownPlain);
        EXPECT_EQ(told, "ZORInternalError (0x0) never raised\n");
    }
}

TEST(MethodFrame, LetsForeignExceptionsPassUntouched)
{
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        const std::string told = Meet(
            operation, [] { throw std::out_of_range("foreign"); },
            [&](const std::function<bool()>& call) { EXPECT_THROW(call(), std::out_of_range); });
        EXPECT_EQ(told, "");
    }
}

TEST(MethodFrame, TellsAnErrorOfTheParameterLinesByNoGuardedBlock)
{
    const Operation operation{"SeekEnv", Form::Short, "iPath = ", [](ZORDuxServices& s) {
                                  return s.SeekEnv("/tmp").IsEmpty();
                              }};
    EXPECT_EQ(MeetAndCatch(operation, new ZORDUXNLSError), "");
}

TEST(MethodFrame, OperationsWithoutAGuardedBlockTellNothing)
{
    for (const Operation& operation :
         {Operation{"SeekPath", Form::Short, "iFullPath = ",
                    [](ZORDuxServices& s) { return s.SeekPath("/tmp").Size() == 0; }},
          Operation{"SeekFile", Form::Short, " Path = ",
                    [](ZORDuxServices& s) { return s.SeekFile("x", "/tmp").IsEmpty(); }},
          Operation{"GetEnv", Form::Short,
                    "TheVar = ", [](ZORDuxServices& s) { return s.GetEnv("PATH").Size() == 0; }},
          Operation{"GetSettingSeparator", Form::Short, "_TheSettingSeparator = ",
                    [](ZORDuxServices& s) { return s.GetSettingSeparator().IsEmpty(); }},
          Operation{"PutSettingSeparator", Form::Short, "iSeparator = ",
                    [](ZORDuxServices& s) { return s.PutSettingSeparator(";"), true; }},
          Operation{
              "GetDynamicObjList", Form::Short, "ObjectType = ",
              [](ZORDuxServices& s) { return s.GetDynamicObjList("ZORIDuxServices").Size() == 0; }},
          Operation{"ZORDuxServices", Form::Short, "> ZORDuxServices::ZORDuxServices (",
                    [](ZORDuxServices& s) { return ZORDuxServices(s).IsNull() == 0; }},
          Operation{"operator=", Form::Short, "> ZORDuxServices::operator=",
                    [](ZORDuxServices& s) { return &(s = ZORDuxServices()) == &s; }},
          Operation{"remove", Form::Short, "> ZORDuxServices::remove",
                    [](ZORDuxServices& s) { return s.remove(), true; }}}) {
        SCOPED_TRACE(operation.name);
        EXPECT_EQ(MeetAndCatch(operation, new ZORDUXNLSError), "");
    }
}

TEST(MethodFrame, WritesNothingWhileTheLevelIsInactive)
{
    ZORDuxServices services;
    TraceLines lines(41);
    services.PutSettingSeparator(";");
    services.SeekEnv("/tmp");
    EXPECT_THAT(lines.Taken(), IsEmpty());
    ZORPSNTrace::SetActiveLevel(42);
    services.PutSettingSeparator(";");
    EXPECT_THAT(lines.Taken(),
                ElementsAre("   ZORDuxServices::PutSettingSeparator iSeparator = ;"));
}

TEST(MethodFrame, TestsTheLevelAnewForEachLine)
{
    ZORDuxServices services;
    TraceLines lines;
    lines.onLine = [](const std::string&) { ZORPSNTrace::SetActiveLevel(41); };
    services.SeekFile("x", "/nowhere");
    EXPECT_THAT(lines.Taken(), ElementsAre("   ZORDuxServices::SeekFile iFileName = x"));
}

TEST(MethodFrame, IndentsTheLinesOfNestedOperations)
{
    ZORDuxServices services;
    TraceLines lines;
    const ZORPSNTrace scope("Caller", 42, nullptr);
    services.SeekEnv("/tmp");
    EXPECT_THAT(lines.Taken(), ElementsAre("      ZORDuxServices::SeekEnv iPath = /tmp",
                                           "      ZORDuxServices::SeekEnv Path = /tmp"));
}
