#include "ZORLoadExternalSchema.h"

#include "SearchLib.h"
#include "ServicesErrors.h"

#include <cstdlib>
#include <dlfcn.h>
#include <iostream>
#include <memory>
#include <new>
#include <string>

namespace
{

constexpr char kFile[] = "VirtualServices/KW4TOOLS.m/src/ZORLoadExternalSchema";

using Creation = void* (*)();

struct FreeText {
    void operator()(char* iText) const { std::free(iText); }
};

struct Names {
    std::string library;  // the file's name
    std::string creation; // the function's name
    std::string path;     // the chosen file
};

Names NamesOf(const std::string& iSchema)
{
    return {"lib" + iSchema + ".so", "fctCreate" + iSchema, ""};
}

std::string Choose(const std::string& iLibrary, const char* iLibraryPath)
{
    constexpr int kNotFound = 120;
    if (iLibraryPath)
        return iLibraryPath;
    const std::unique_ptr<char, FreeText> found(SearchLib(iLibrary.c_str()));
    if (!found)
        RaiseLibraryNotLoadable(iLibrary.c_str(), kFile, kNotFound);
    return found.get();
}

// The loader looks for a bare name in places of its own: here it means the current directory.
std::string ForLoader(const std::string& iPath)
{
    return iPath.find('/') == std::string::npos ? "./" + iPath : iPath;
}

void Tell(const char* iWhat, const std::string& iName, const char* iReason)
{
    std::cerr << iWhat << iName << "reason =" << (iReason ? iReason : "") << std::endl;
}

void* OpenLibrary(const Names& iNames)
{
    constexpr int kNotLoadable = 205;
    void* const library = dlopen(ForLoader(iNames.path).c_str(), RTLD_LAZY);
    if (!library) {
        Tell("Can't open library -->", iNames.path, dlerror());
        RaiseLibraryNotLoadable(iNames.path.c_str(), kFile, kNotLoadable);
    }
    return library;
}

Creation FindCreation(void* iLibrary, const Names& iNames)
{
    constexpr int kNoCreation = 262;
    void* const creation = dlsym(iLibrary, iNames.creation.c_str());
    if (!creation) {
        Tell("Can't find symbol -->", iNames.creation, dlerror());
        dlclose(iLibrary);
        RaiseNoCreation(iNames.path.c_str(), iNames.creation.c_str(), kFile, kNoCreation);
    }
    return reinterpret_cast<Creation>(creation);
}

// The creation function, or null when there is no memory for the names. Apart from the call of it,
// so that lack of memory in there is the caller's to hear of.
Creation Load(const char* iSchema, const char* iLibraryPath)
{
    try {
        Names names = NamesOf(iSchema ? iSchema : "");
        names.path = Choose(names.library, iLibraryPath);
        return FindCreation(OpenLibrary(names), names);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

} // namespace

void* ZORLoadExternalSchema(const char* iSchema, const char* iLibraryPath)
{
    const Creation creation = Load(iSchema, iLibraryPath);
    return creation ? creation() : nullptr;
}
