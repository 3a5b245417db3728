#pragma once

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <dlfcn.h>
#include <elf.h>
#include <string>

// An empty current directory, and directories for schema libraries of which "a" and "b" are in
// LD_LIBRARY_PATH.
class SchemaSite : public ScopedDirectory
{
public:
    SchemaSite() : _Path("LD_LIBRARY_PATH", *this / "a:" + (*this / "b"))
    {
        for (const char* name : {"a", "b", "elsewhere", "here"})
            std::filesystem::create_directories(Path() / name);
        std::filesystem::current_path(Path() / "here");
    }
    ~SchemaSite() { std::filesystem::current_path("/"); }

    // Puts a copy of the library file at the place and returns its path.
    std::string Install(const std::string& iLibrary, const std::string& iPlace) const
    {
        const std::filesystem::path place = Path() / iPlace;
        std::filesystem::create_directories(place.parent_path());
        std::filesystem::copy_file(iLibrary, place);
        return place.string();
    }
    // The same for a library that says to be for another kind of machine.
    std::string InstallForOtherMachine(const std::string& iLibrary, const std::string& iPlace) const
    {
        const std::string place = Install(iLibrary, iPlace);
        const Elf64_Half machine = EM_S390;
        std::fstream file(place, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(offsetof(Elf64_Ehdr, e_machine));
        file.write(reinterpret_cast<const char*>(&machine), sizeof machine);
        return place;
    }

    static bool IsLoaded(const std::string& iPath)
    {
        void* const library = dlopen(iPath.c_str(), RTLD_LAZY | RTLD_NOLOAD);
        if (library)
            dlclose(library);
        return library != nullptr;
    }

private:
    ScopedEnvironment _Path;
};

// A variable of a library that is loaded.
template <class Type>
Type& VariableOf(const std::string& iPath, const char* iName)
{
    void* const library = dlopen(iPath.c_str(), RTLD_LAZY);
    if (!library || !dlsym(library, iName))
        throw std::runtime_error("no " + std::string(iName) + " in " + iPath);
    return *static_cast<Type*>(dlsym(library, iName));
}
