#include "SettingsCache.h"

#include "KeepAcrossForks.h"
#include "SettingsFile.h"

#include <cstddef>
#include <fcntl.h>
#include <mutex>
#include <new>
#include <optional>
#include <time.h>
#include <unordered_map>

namespace
{

constexpr std::size_t kMostFiles = 64;

bool IsSame(const timespec& iLeft, const timespec& iRight)
{
    return iLeft.tv_sec == iRight.tv_sec && iLeft.tv_nsec == iRight.tv_nsec;
}

bool IsBefore(const timespec& iLeft, const timespec& iRight)
{
    return iLeft.tv_sec != iRight.tv_sec ? iLeft.tv_sec < iRight.tv_sec
                                         : iLeft.tv_nsec < iRight.tv_nsec;
}

// What tells one state of a file from another.
struct Stamp {
    dev_t device;
    ino_t inode;
    off_t size;
    timespec modified;
    timespec changed;

    explicit Stamp(const struct stat& iStatus)
        : device(iStatus.st_dev), inode(iStatus.st_ino), size(iStatus.st_size),
          modified(iStatus.st_mtim), changed(iStatus.st_ctim)
    {
    }

    bool operator==(const Stamp& iOther) const
    {
        return device == iOther.device && inode == iOther.inode && size == iOther.size &&
               IsSame(modified, iOther.modified) && IsSame(changed, iOther.changed);
    }

    // Whether any change made at `iNow` or later shows in the times.
    bool IsOlderThan(timespec iNow) const
    {
        // Times without a fraction come from a file system that counts whole seconds, or two.
        if (modified.tv_nsec == 0 && changed.tv_nsec == 0)
            iNow.tv_sec -= 2;
        return IsBefore(modified, iNow) && IsBefore(changed, iNow);
    }
};

struct CachedFile {
    std::shared_ptr<const SettingsText> text;
    std::optional<Stamp> stamp; // nothing when it is too young to be trusted
};

// The clock that file systems take their times from.
timespec FileClock()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return now;
}

class Cache
{
public:
    // Never torn down, and in a place of its own: a save that is done must not fail for want of
    // memory for the cache.
    static Cache& Instance()
    {
        alignas(Cache) static std::byte place[sizeof(Cache)];
        static Cache* const cache = new (place) Cache;
        return *cache;
    }

    // The text of the file, when that has not changed since it was read.
    std::shared_ptr<const SettingsText> Unchanged(const std::string& iPath, const Stamp& iStamp)
    {
        const std::lock_guard lock(_Mutex);
        const CachedFile* const file = Find(iPath);
        return file && file->stamp == iStamp ? file->text : nullptr;
    }

    // The text of the file when it was read last.
    std::shared_ptr<const SettingsText> Known(const std::string& iPath)
    {
        const std::lock_guard lock(_Mutex);
        const CachedFile* const file = Find(iPath);
        return file ? file->text : nullptr;
    }

    // Without memory for it the file is not remembered, which changes no result.
    void Put(const std::string& iPath, CachedFile iFile) noexcept
    {
        const std::lock_guard lock(_Mutex);
        if (CachedFile* const file = Find(iPath)) {
            *file = std::move(iFile);
            return;
        }
        if (_Files.size() >= kMostFiles) {
            _Recent = nullptr;
            _Files.clear();
        }
        try {
            _Files.emplace(iPath, std::move(iFile));
        } catch (const std::bad_alloc&) {
        }
    }

private:
    Cache() { KeepAcrossForks<&Lock>(); }

    static std::mutex& Lock() { return Instance()._Mutex; }

    // Mostly the file is the one that was asked for last: that is told without a hash.
    CachedFile* Find(const std::string& iPath)
    {
        if (!_Recent || _Recent->first != iPath) {
            const auto found = _Files.find(iPath);
            _Recent = found == _Files.end() ? nullptr : &*found;
        }
        return _Recent ? &_Recent->second : nullptr;
    }

    using Files = std::unordered_map<std::string, CachedFile>;
    std::mutex _Mutex;
    Files _Files;
    Files::value_type* _Recent = nullptr;
};

// Made with the library: a child forked while another thread makes it would wait for ever.
[[maybe_unused]] const Cache& theCache = Cache::Instance();

} // namespace

std::shared_ptr<const SettingsText> CachedSettings(const std::string& iPath,
                                                   const struct stat& iStatus)
{
    if (auto unchanged = Cache::Instance().Unchanged(iPath, Stamp(iStatus)))
        return unchanged;
    RequireSettingsFile(iPath, iStatus);
    const timespec before = FileClock();
    std::optional<SettingsFile> file = ReadSettingsFile(iPath, AT_FDCWD, iPath.c_str());
    if (!file)
        return SettingsText::Nothing();
    CachedFile read{Cache::Instance().Known(iPath), std::nullopt};
    if (!read.text || read.text->Bytes() != file->bytes)
        read.text = SettingsText::Read(iPath, std::move(file->bytes), read.text.get());
    const Stamp stamp(file->status);
    if (stamp.IsOlderThan(before))
        read.stamp = stamp;
    Cache::Instance().Put(iPath, read);
    return read.text;
}

void CacheSavedSettings(const std::string& iPath, std::shared_ptr<const SettingsText> iText)
{
    Cache::Instance().Put(iPath, {std::move(iText), std::nullopt});
}
