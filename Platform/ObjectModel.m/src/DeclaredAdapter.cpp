#include "DeclaredAdapter.h"

#include "RaiseWithText.h"
#include "ZORInternalError.h"

#include <dlfcn.h>
#include <utility>

namespace
{

std::string LoaderText()
{
    const char* const text = dlerror();
    return text ? text : "the loader does not say why";
}

// The name under which a C++ compiler knows "ZORBaseUnknown* <name>(ZORBaseUnknown*)".
std::string CompiledName(const std::string& iName)
{
    return "_Z" + std::to_string(iName.size()) + iName + "P14ZORBaseUnknown";
}

} // namespace

DeclaredAdapter::DeclaredAdapter(std::string iFile, DictionaryEntry iEntry)
    : _File(std::move(iFile)), _Entry(std::move(iEntry))
{
}

// No lock is held while the library is loaded: its own start may come here again, and two threads
// that load it at once get the same one.
ZORCreator DeclaredAdapter::GetCreator()
{
    ZORCreator creator = _Creator.load(std::memory_order_acquire);
    if (!creator) {
        creator = Load();
        _Creator.store(creator, std::memory_order_release);
    }
    return creator;
}

// A relative path begins at the directory of the file; a bare name is the loader's to find.
std::string DeclaredAdapter::LibraryPath() const
{
    const std::string& library = _Entry.library;
    if (library.front() == '/' || library.find('/') == std::string::npos)
        return library;
    return _File.substr(0, _File.rfind('/') + 1) + library;
}

ZORCreator DeclaredAdapter::Load() const
{
    void* const library = dlopen(LibraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library)
        Raise("cannot load the library: " + LoaderText());
    void* creator = dlsym(library, CompiledName(_Entry.creator).c_str());
    if (!creator)
        creator = dlsym(library, _Entry.creator.c_str());
    if (!creator)
        Raise("the library has no such creator: " + LoaderText());
    return reinterpret_cast<ZORCreator>(creator);
}

void DeclaredAdapter::Raise(const std::string& iWhat) const
{
    const std::string text = _File + ": line " + std::to_string(_Entry.line) + ": " + iWhat;
    RaiseWithText<ZORInternalError>(text, "Platform/ObjectModel.m/src/DeclaredAdapter", __LINE__);
}
