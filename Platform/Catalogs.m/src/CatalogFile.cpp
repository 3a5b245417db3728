#include "CatalogFile.h"

#include "CatalogFailure.h"
#include "Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <system_error>
#include <time.h>
#include <unistd.h>
#include <unordered_map>

namespace
{

constexpr off_t kLargestFile = 16 << 20;
constexpr std::size_t kMostFiles = 64; // in the cache

[[noreturn]] void Fail(const std::string& iPath, const std::string& iWhat)
{
    throw CatalogFailure("message catalog " + iPath + ": " + iWhat);
}

[[noreturn]] void FailTo(const char* iStep, const std::string& iPath, int iError)
{
    Fail(iPath, std::string("cannot ") + iStep + ": " + std::system_category().message(iError));
}

// The status of an open file; raises unless it is a plain one of bearable size.
struct stat StatusOf(const Descriptor& iFile, const std::string& iPath)
{
    struct stat status;
    if (fstat(iFile.Get(), &status) != 0)
        FailTo("look at it", iPath, errno);
    if (!S_ISREG(status.st_mode))
        Fail(iPath, "it is not a file");
    if (status.st_size > kLargestFile)
        Fail(iPath, "it is larger than 16 MiB");
    return status;
}

// No more than `iSize` bytes, the size the file had a moment ago.
std::string Bytes(const Descriptor& iFile, off_t iSize, const std::string& iPath)
{
    std::string bytes(static_cast<std::size_t>(iSize), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = Uninterrupted(
            [&] { return read(iFile.Get(), bytes.data() + done, bytes.size() - done); });
        if (got < 0)
            FailTo("read it", iPath, errno);
        if (got == 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
}

// What tells one state of a file from another.
struct State {
    dev_t device;
    ino_t inode;
    off_t size;
    std::int64_t modified; // in nanoseconds, as the other times
    std::int64_t changed;

    bool operator==(const State&) const = default;
};

std::int64_t Nanoseconds(const timespec& iTime)
{
    return iTime.tv_sec * std::int64_t{1'000'000'000} + iTime.tv_nsec;
}

State StateOf(const struct stat& iStatus)
{
    return {iStatus.st_dev, iStatus.st_ino, iStatus.st_size, Nanoseconds(iStatus.st_mtim),
            Nanoseconds(iStatus.st_ctim)};
}

// Whether any later change would show in the file's times, those of a file system that counts in
// steps of two seconds as well.
bool IsSettled(const State& iState)
{
    constexpr std::int64_t kCoarsestStep = 2'000'000'000;
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return std::max(iState.modified, iState.changed) + kCoarsestStep < Nanoseconds(now);
}

// The files that were read last. Never torn down: errors are told at exit, too. Nobody waits for
// it: a child forked while another thread was in here would wait for ever.
class Cache
{
public:
    static Cache& Instance()
    {
        static Cache* const cache = new Cache;
        return *cache;
    }

    std::shared_ptr<const CatalogText> Find(const std::string& iPath, const State& iState)
    {
        const std::unique_lock<std::mutex> lock(_Mutex, std::try_to_lock);
        if (!lock)
            return nullptr;
        const auto found = _Files.find(iPath);
        return found != _Files.end() && found->second.state == iState ? found->second.text
                                                                      : nullptr;
    }

    void Keep(const std::string& iPath, const State& iState,
              const std::shared_ptr<const CatalogText>& iText)
    {
        const std::unique_lock<std::mutex> lock(_Mutex, std::try_to_lock);
        if (!lock)
            return;
        if (_Files.size() >= kMostFiles && !_Files.contains(iPath))
            _Files.clear();
        _Files.insert_or_assign(iPath, File{iState, iText});
    }

private:
    struct File {
        State state;
        std::shared_ptr<const CatalogText> text;
    };

    std::mutex _Mutex;
    std::unordered_map<std::string, File> _Files;
};

} // namespace

std::shared_ptr<const CatalogText> ReadCatalog(const std::string& iPath)
{
    const Descriptor file(Uninterrupted(
        [&] { return open(iPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    if (!file && (errno == ENOENT || errno == ENOTDIR))
        return nullptr;
    if (!file)
        FailTo("open it", iPath, errno);
    const struct stat status = StatusOf(file, iPath);
    const State state = StateOf(status);
    if (std::shared_ptr<const CatalogText> known = Cache::Instance().Find(iPath, state))
        return known;
    const bool settled = IsSettled(state);
    auto text = std::make_shared<const CatalogText>(
        ParseCatalog(iPath, Bytes(file, status.st_size, iPath)));
    if (settled)
        Cache::Instance().Keep(iPath, state, text);
    return text;
}
