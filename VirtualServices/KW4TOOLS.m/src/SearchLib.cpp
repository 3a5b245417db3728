#include "SearchLib.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace
{

char* Join(const char* iDirectory, std::size_t iLength, const char* iName)
{
    const std::size_t nameSize = std::strlen(iName) + 1;
    char* const path = static_cast<char*>(std::malloc(iLength + 1 + nameSize));
    if (path) {
        std::memcpy(path, iDirectory, iLength);
        path[iLength] = '/';
        std::memcpy(path + iLength + 1, iName, nameSize);
    }
    return path;
}

// The path in the next directory of the list, which loses that one; null when there is none left,
// or no memory.
char* NextPath(const char*& ioList, const char* iName)
{
    const char* const directory = ioList + std::strspn(ioList, ":");
    const std::size_t length = std::strcspn(directory, ":");
    ioList = directory + length;
    return length > 0 ? Join(directory, length, iName) : nullptr;
}

} // namespace

// Lack of memory ends the search: what a later directory has is not the library of that name.
char* SearchLib(const char* iLibrary)
{
    if (!iLibrary)
        return nullptr;
    const char* const variable = std::getenv("LD_LIBRARY_PATH");
    const char* directories = variable ? variable : "";
    char* path = strdup(iLibrary);
    while (path && access(path, F_OK) != 0) {
        std::free(path);
        path = NextPath(directories, iLibrary);
    }
    return path;
}
