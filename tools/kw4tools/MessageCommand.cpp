// message: the texts of message catalogs.

#include "Commands.h"
#include "Failure.h"
#include "Json.h"
#include "Program.h"
#include "ToldErrors.h"
#include "ZORDuxMessenger.h"
#include "ZORMsgCatalogDifferences.h"

namespace
{

// The text on one line: each end of line in it as "\n".
std::string OneLine(const ZORUnicodeString& iText)
{
    std::string line;
    for (const char each : View(iText))
        if (each == '\n')
            line += "\\n";
        else
            line += each;
    return line;
}

Status PrintMessage(Session& ioSession, const std::string& iTag,
                    const std::vector<std::string>& iParameters, bool iAsJson)
{
    ZORDuxMessenger& messenger = *GetDuxMessenger();
    messenger.Set(Text(iTag));
    for (const std::string& parameter : iParameters)
        messenger.Add(Text(parameter));
    ZORUnicodeString shortText;
    ZORUnicodeString longText;
    TellingErrors([&] {
        messenger.GetShortMsg(shortText);
        messenger.GetLongMsg(longText);
    });
    if (iAsJson) {
        ioSession.Out().Line(Json::Object()
                                 .Add("class", messenger.Ier())
                                 .Add("short", View(shortText))
                                 .Add("long", View(longText))
                                 .Text());
        return Status::Yes;
    }
    ioSession.Out().Line("class " + std::to_string(messenger.Ier()));
    ioSession.Out().Line("short " + OneLine(shortText));
    ioSession.Out().Line("long " + OneLine(longText));
    return Status::Yes;
}

Status CheckCatalog(Session& ioSession, const std::string& iCatalog, bool iAsJson)
{
    const std::vector<std::string> differences =
        TellingErrors([&] { return ZORMsgCatalogDifferences(iCatalog.c_str()); });
    if (iAsJson)
        ioSession.Out().Line(Json::ArrayOf(differences).Text());
    else
        for (const std::string& difference : differences)
            ioSession.Out().Line(difference);
    return YesIf(differences.empty());
}

} // namespace

void AddMessageCommand(Program& ioProgram)
{
    Command& message =
        ioProgram.Add("Messages", "message", "Print the texts of a message, or check a catalog");
    const std::optional<std::string>& tag =
        message.OptionalArgument("TAG", "The message's tag, such as CDA_W_0001");
    const std::vector<std::string>& parameters =
        message.Arguments("PARAMETER", "What stands in its places {1}, {2} and so on");
    const std::optional<std::string>& catalog =
        message.Option("--check", "CATALOG",
                       "Print instead what differs between the locales of a catalog;\n"
                       "exit status 1 when anything does");
    const bool& json = message.JsonFlag();
    message.Explains(
        "Prints three lines: \"class N\" (2 warning, 1 information, -1 error or not\n"
        "known), \"short TEXT\" and \"long TEXT\", a newline in a text as \"\\n\". As JSON:\n"
        "{\"class\":N,\"short\":TEXT,\"long\":TEXT}, or an array of the differences.\n"
        "The texts come from the catalogs in the directories of ZOR_CATALOG_PATH, in\n"
        "your language where they have it; \"kw4tools status\" lists them.");
    message.Example("kw4tools message CDA_W_0001 plate ann");
    message.Advises([&](ZORError&) {
        return catalog ? "the catalog '" + *catalog +
                             "' was not checked; mend what the message "
                             "above names, or see with 'kw4tools status' which catalogs there are"
                       : "the message '" + tag.value_or("") +
                             "' has no texts to print; see with "
                             "'kw4tools status' which catalogs there are";
    });
    message.Does([&](Session& ioSession) {
        if (!tag == !catalog)
            throw UsageError(tag ? "--check takes a catalog alone, and no TAG" : "TAG is required");
        return catalog ? CheckCatalog(ioSession, *catalog, json)
                       : PrintMessage(ioSession, *tag, parameters, json);
    });
}
