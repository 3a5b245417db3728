#include "VirtualTable.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <map>
#include <stdexcept>

namespace
{

using Symbols = std::map<std::uintptr_t, std::string>; // demangled names by offset in the file

// Without the mark of a compiler's second name for the same code.
std::string WithoutClone(const std::string& iName)
{
    return iName.substr(0, iName.find(" [clone "));
}

Symbols ReadSymbols(const std::string& iLibrary)
{
    const std::string command = "nm -C --defined-only '" + iLibrary + "'";
    std::FILE* const output = popen(command.c_str(), "r");
    if (!output)
        throw std::runtime_error("cannot run " + command);
    Symbols symbols;
    char* line = nullptr;
    std::size_t room = 0;
    while (getline(&line, &room, output) > 0) {
        std::string text(line);
        text.pop_back();
        // "<address> <type letter> <name>"
        const std::size_t type = text.find(' ');
        if (type != std::string::npos && text.size() > type + 3)
            symbols[std::strtoull(text.c_str(), nullptr, 16)] = WithoutClone(text.substr(type + 3));
    }
    std::free(line);
    pclose(output);
    return symbols;
}

std::string NameOf(const void* iFunction)
{
    static std::map<std::string, Symbols> libraries;
    Dl_info info;
    if (!dladdr(iFunction, &info))
        return "nowhere";
    auto library = libraries.find(info.dli_fname);
    if (library == libraries.end())
        library = libraries.emplace(info.dli_fname, ReadSymbols(info.dli_fname)).first;
    const auto offset = reinterpret_cast<std::uintptr_t>(iFunction) -
                        reinterpret_cast<std::uintptr_t>(info.dli_fbase);
    const auto symbol = library->second.find(offset);
    return symbol == library->second.end() ? "unknown" : symbol->second;
}

} // namespace

std::vector<std::string> VirtualTable(const void* iObject, std::size_t iCount)
{
    const void* const* table;
    std::memcpy(&table, iObject, sizeof table);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < iCount; ++i)
        names.push_back(NameOf(table[i]));
    return names;
}
