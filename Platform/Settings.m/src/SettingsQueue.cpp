#include "SettingsQueue.h"

#include <algorithm>
#include <fcntl.h>
#include <functional>

namespace
{

// Bits of a byte's number: microseconds of more than two years, and the file's name.
constexpr int kTimeBits = 46;
constexpr int kNameBits = 16;
constexpr std::int64_t kTimes = std::int64_t{1} << kTimeBits;

// In microseconds. Who waits less is not stepped aside for: to hand the lock over takes longer than
// many a save. Who seems to wait longer than anybody does is stopped.
constexpr std::int64_t kMoment = 10'000;
constexpr std::int64_t kLongest = std::chrono::microseconds(SettingsQueue::kLongestWait).count();

std::int64_t Now()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count() % kTimes;
}

} // namespace

SettingsQueue::SettingsQueue(int iDirectory, std::string_view iName)
    : _Directory(iDirectory),
      _Base(static_cast<std::int64_t>(std::hash<std::string_view>()(iName) % (1U << kNameBits))
            << kTimeBits)
{
}

SettingsQueue::~SettingsQueue()
{
    short type = F_UNLCK;
    if (_Since != kNotJoined)
        Lock(F_OFD_SETLK, type, _Since, _Since + 1);
}

void SettingsQueue::Join()
{
    if (_Since != kNotJoined)
        return;
    short type = F_RDLCK;
    _Since = Now();
    Lock(F_OFD_SETLK, type, _Since, _Since + 1);
}

bool SettingsQueue::MustStepAside() const
{
    const std::int64_t now = Now();
    const std::int64_t end = now - kMoment;
    short type = F_WRLCK;
    return Lock(F_OFD_GETLK, type, std::max<std::int64_t>(now - kLongest, 0),
                _Since == kNotJoined ? end : std::min(end, _Since)) &&
           type != F_UNLCK;
}

bool SettingsQueue::Lock(int iCommand, short& ioType, std::int64_t iFrom, std::int64_t iTo) const
{
    if (iFrom >= iTo)
        return false;
    struct flock lock {
    };
    lock.l_type = ioType;
    lock.l_whence = SEEK_SET;
    lock.l_start = _Base + iFrom;
    lock.l_len = iTo - iFrom;
    const bool done = fcntl(_Directory, iCommand, &lock) == 0;
    ioType = lock.l_type;
    return done;
}
