#include "SchemaCheck.h"

#include "DynamicSymbols.h"
#include "LoaderTrace.h"
#include "SearchLib.h"

#include <algorithm>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace
{

struct Free {
    void operator()(char* iText) const { std::free(iText); }
};
using Text = std::unique_ptr<char, Free>;

// A name for people, with the linkage name behind it where the two differ.
std::string Readable(const std::string& iSymbol)
{
    int status = 0;
    const Text name(abi::__cxa_demangle(iSymbol.c_str(), nullptr, nullptr, &status));
    const bool isPlain = status != 0 || iSymbol.compare(0, 2, "_Z") != 0;
    return isPlain ? iSymbol : std::string(name.get()) + " (" + iSymbol + ")";
}

// As the library itself does: a bare name means the current directory.
std::string ForLoader(const std::string& iPath)
{
    return iPath.find('/') == std::string::npos ? "./" + iPath : iPath;
}

} // namespace

SchemaCheck::SchemaCheck(const std::string& iSchema)
{
    const std::string library = "lib" + iSchema + ".so";
    const Text path(SearchLib(library.c_str()));
    if (path)
        Check(path.get(), "fctCreate" + iSchema);
    else
        _Missing.push_back("library " + library);
}

void SchemaCheck::Check(const std::string& iPath, const std::string& iCreation)
{
    const LoaderTrace trace = TraceLoader(ForLoader(iPath));
    if (!trace.refusal.empty()) {
        _Missing.push_back("library " + iPath + ": " + trace.refusal);
        return;
    }
    for (const std::string& each : trace.missingLibraries)
        _Missing.push_back("dependency " + each);
    for (const std::string& each : trace.missingSymbols)
        _Missing.push_back("symbol " + Readable(each));
    const auto hasCreation = [&](const std::string& file) {
        return ExportsSymbol(file, iCreation);
    };
    if (!hasCreation(iPath) &&
        std::none_of(trace.libraries.begin(), trace.libraries.end(), hasCreation))
        _Missing.push_back("creation function " + iCreation);
}
