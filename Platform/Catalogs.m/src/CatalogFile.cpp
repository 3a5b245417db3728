#include "CatalogFile.h"

#include "CatalogFailure.h"

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <optional>
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

// A catalog file that is open; it goes with this object.
class OpenCatalog
{
public:
    explicit OpenCatalog(const std::string& iPath) : _Path(iPath)
    {
        do
            _Descriptor = open(iPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        while (_Descriptor < 0 && errno == EINTR);
        if (_Descriptor < 0 && errno != ENOENT && errno != ENOTDIR)
            FailTo("open it", iPath, errno);
    }
    ~OpenCatalog()
    {
        if (_Descriptor >= 0)
            close(_Descriptor);
    }
    OpenCatalog(const OpenCatalog&) = delete;
    OpenCatalog& operator=(const OpenCatalog&) = delete;

    bool Exists() const { return _Descriptor >= 0; }

    // Of a plain file of bearable size; anything else raises.
    struct stat Status() const
    {
        struct stat status;
        if (fstat(_Descriptor, &status) != 0)
            FailTo("look at it", _Path, errno);
        if (!S_ISREG(status.st_mode))
            Fail(_Path, "it is not a file");
        if (status.st_size > kLargestFile)
            Fail(_Path, "it is larger than 16 MiB");
        return status;
    }

    // No more than `iSize` bytes, the size it had a moment ago.
    std::string Bytes(off_t iSize) const
    {
        std::string bytes(static_cast<std::size_t>(iSize), '\0');
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t got = read(_Descriptor, bytes.data() + done, bytes.size() - done);
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                FailTo("read it", _Path, errno);
            if (got == 0)
                break;
            done += static_cast<std::size_t>(got);
        }
        bytes.resize(done);
        return bytes;
    }

private:
    const std::string& _Path;
    int _Descriptor = -1;
};

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

// The files that were read last. Never torn down: errors are told at exit, too.
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
        const std::lock_guard<std::mutex> lock(_Mutex);
        const auto found = _Files.find(iPath);
        return found != _Files.end() && found->second.state == iState ? found->second.text
                                                                      : nullptr;
    }

    void Keep(const std::string& iPath, const State& iState,
              const std::shared_ptr<const CatalogText>& iText)
    {
        const std::lock_guard<std::mutex> lock(_Mutex);
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
    const OpenCatalog file(iPath);
    if (!file.Exists())
        return nullptr;
    const State state = StateOf(file.Status());
    if (std::shared_ptr<const CatalogText> known = Cache::Instance().Find(iPath, state))
        return known;
    const bool settled = IsSettled(state);
    auto text = std::make_shared<const CatalogText>(ParseCatalog(iPath, file.Bytes(state.size)));
    if (settled)
        Cache::Instance().Keep(iPath, state, text);
    return text;
}
