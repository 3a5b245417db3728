#include "LineOutput.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

void WriteWhole(int iDescriptor, std::string_view iText)
{
    const int before = errno;
    while (!iText.empty()) {
        const ssize_t written = write(iDescriptor, iText.data(), iText.size());
        if (written > 0)
            iText.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            break;
    }
    errno = before;
}

int OpenForLines(const char* iPath)
{
    return open(iPath, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY, 0666);
}
