#include "SettingsFile.h"

#include "SettingsFailure.h"
#include "SettingsText.h"

#include <algorithm>
#include <fcntl.h>

namespace
{

const char* KindOf(mode_t iMode)
{
    return S_ISDIR(iMode)    ? "a directory"
           : S_ISFIFO(iMode) ? "a named pipe"
           : S_ISSOCK(iMode) ? "a socket"
           : S_ISLNK(iMode)  ? "a symbolic link"
                             : "a device";
}

// Reads until the end of the file, even when it grows meanwhile.
std::string ReadAll(const std::string& iFile, int iDescriptor, std::size_t iExpected)
{
    std::string bytes(iExpected + 1, '\0'); // the byte too many tells the end
    std::size_t size = 0;
    while (true) {
        const ssize_t got = Uninterrupted(
            [&] { return read(iDescriptor, bytes.data() + size, bytes.size() - size); });
        if (got < 0)
            RaiseSystemFailure(iFile, "read it", errno);
        size += static_cast<std::size_t>(got);
        if (got == 0 || size == iExpected)
            break;
        if (size > SettingsText::kLargestFile)
            RaiseFailure(iFile, "it is larger than 64 MiB");
        if (size == bytes.size())
            bytes.resize(2 * size);
    }
    bytes.resize(size);
    return bytes;
}

} // namespace

void RequireSettingsFile(const std::string& iFile, const struct stat& iStatus)
{
    if (!S_ISREG(iStatus.st_mode))
        RaiseFailure(iFile, std::string("it is ") + KindOf(iStatus.st_mode) + ", not a file");
    if (static_cast<unsigned long long>(iStatus.st_size) > SettingsText::kLargestFile)
        RaiseFailure(iFile, "it is larger than 64 MiB");
}

std::optional<SettingsFile> ReadSettingsFile(const std::string& iFile, int iDirectory,
                                             const char* iName, int iFlags)
{
    Descriptor file(Uninterrupted([&] {
        return openat(iDirectory, iName, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | iFlags);
    }));
    if (!file && errno == ENOENT)
        return std::nullopt;
    if (!file)
        RaiseSystemFailure(iFile, "open it", errno);
    SettingsFile result{std::move(file), {}, {}};
    if (fstat(result.descriptor.Get(), &result.status) != 0)
        RaiseSystemFailure(iFile, "ask for its size", errno);
    RequireSettingsFile(iFile, result.status);
    result.bytes =
        ReadAll(iFile, result.descriptor.Get(), static_cast<std::size_t>(result.status.st_size));
    return result;
}
