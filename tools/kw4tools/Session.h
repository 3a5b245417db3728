#pragma once

#include "CreateServices.h"
#include "Results.h"

#include <optional>
#include <string>

// What a running command works with: the services and the results.
class Session
{
public:
    // The services, made when first asked for, with the separator of the command line.
    ZORIDuxServices& Services();
    Results& Out() { return _Results; }

    // The characters that separate the directories of a path list, when the command line says.
    std::optional<std::string> separator;

private:
    ZORIDuxServices_var _Services;
    Results _Results;
};

// An argument as the services take it, and back.
inline ZORUnicodeString Text(const std::string& iArgument)
{
    return ZORUnicodeString(iArgument);
}
inline std::string_view View(const ZORUnicodeString& iText)
{
    return {iText.ConvertToChar(), iText.GetLengthInBytes()};
}
