#include "SearchLib.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace
{

// The path if something exists there, else null.
char* IfThere(char* iPath)
{
    if (iPath && access(iPath, F_OK) == 0)
        return iPath;
    std::free(iPath);
    return nullptr;
}

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

} // namespace

char* SearchLib(const char* iLibrary)
{
    if (!iLibrary)
        return nullptr;
    char* found = IfThere(strdup(iLibrary));
    const char* directory = std::getenv("LD_LIBRARY_PATH");
    while (!found && directory && *directory) {
        const std::size_t length = std::strcspn(directory, ":");
        if (length > 0)
            found = IfThere(Join(directory, length, iLibrary));
        directory += length + (directory[length] == ':' ? 1 : 0);
    }
    return found;
}
