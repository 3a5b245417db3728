#include "ZORLineFile.h"

#include "Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace
{

// Returns how much the kernel took.
std::size_t WriteAll(int iDescriptor, std::string_view iText)
{
    std::size_t done = 0;
    while (done < iText.size()) {
        const ssize_t written = Uninterrupted(
            [&] { return write(iDescriptor, iText.data() + done, iText.size() - done); });
        if (written <= 0)
            break;
        done += static_cast<std::size_t>(written);
    }
    return done;
}

// Moves an open file off the standard descriptors, which it gets where the program has closed them:
// what others write to those must not land in it.
int OffStandardStreams(int iDescriptor)
{
    if (iDescriptor > STDERR_FILENO)
        return iDescriptor;
    const int moved = fcntl(iDescriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int error = errno;
    close(iDescriptor);
    errno = error;
    return moved;
}

} // namespace

ZORLineFile::ZORLineFile() : _Descriptor(STDERR_FILENO) {}

ZORLineFile::~ZORLineFile()
{
    Close();
}

bool ZORLineFile::Open(const char* iPath, bool iTruncate)
{
    const int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY;
    int opened =
        Uninterrupted([&] { return open(iPath, iTruncate ? flags | O_TRUNC : flags, 0666); });
    if (opened >= 0)
        opened = OffStandardStreams(opened);
    if (opened < 0)
        return false;
    Close();
    _Descriptor = opened;
    return true;
}

void ZORLineFile::Close()
{
    if (_Descriptor != STDERR_FILENO)
        close(_Descriptor);
    _Descriptor = STDERR_FILENO;
    _Torn = false;
}

void ZORLineFile::Write(const char* iText, std::size_t iLength)
{
    const int before = errno;
    if (!_Torn || WriteAll(_Descriptor, "\n") == 1) {
        const std::size_t done = WriteAll(_Descriptor, {iText, iLength});
        const bool torn = done > 0 && done < iLength && iText[done - 1] != '\n';
        if (torn != _Torn) // a look costs less than a store
            _Torn = torn;
    }
    errno = before;
}
