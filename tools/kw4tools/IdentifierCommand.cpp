// id: new identifiers.

#include "Commands.h"
#include "Failure.h"
#include "IdentifierList.h"
#include "Number.h"
#include "Program.h"

void AddIdentifierCommand(Program& ioProgram)
{
    Command& id = ioProgram.Add("Identifiers", "id", "Print new unique identifiers");
    const bool& octets = id.Flag("--octets", "Print each as its octets, hexadecimal pairs with a\n"
                                             "blank between");
    const std::optional<std::string>& count =
        id.Option("--count", "N", "How many to print, one a line (default: 1)");
    id.Example("kw4tools id --count 3");
    id.Does([&](Session& ioSession) {
        const std::int32_t wanted = count ? WholeNumber("--count", *count) : 1;
        if (wanted < 0)
            throw UsageError("--count is " + *count + ": it cannot be negative");
        ZORIDuxServices& services = ioSession.Services();
        for (std::int32_t i = 0; i < wanted; ++i)
            if (octets)
                ioSession.Out().Line(HexadecimalPairs(services.GetOctetIdentifier(), " "));
            else
                ioSession.Out().Line(View(services.GetIdentifier()));
        return Status::Yes;
    });
}
