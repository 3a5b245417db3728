#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>
#include <sys/types.h>

// Those who wait for the lock of a settings file. Whoever tries at the right moment gets that,
// which is the process that has just given it back, again and again. So one steps aside for those
// who came before and have waited for more than a moment.
//
// Each that waits has a kernel lock, of its open file, on one byte of the directory; the number of
// the byte is made of the file's name and the time. The kernel drops it with the process. Where
// there are no such locks, nobody steps aside; and no one does for good, as whoever is first in the
// queue may be stopped.
class SettingsQueue
{
public:
    // Nobody waits longer.
    static constexpr std::chrono::seconds kLongestWait{10};

    // `iDirectory` is open for this save alone.
    SettingsQueue(int iDirectory, std::string_view iName);
    // Leaves the queue.
    ~SettingsQueue();
    SettingsQueue(const SettingsQueue&) = delete;
    SettingsQueue& operator=(const SettingsQueue&) = delete;

    // Joins those who wait; who has joined stays where he is.
    void Join();
    // Whether somebody else should get the lock before.
    bool MustStepAside() const;

private:
    static constexpr std::int64_t kNotJoined = -1;

    bool Lock(int iCommand, short& ioType, std::int64_t iFrom, std::int64_t iTo) const;

    const int _Directory;
    const std::int64_t _Base; // of the bytes for this file
    std::int64_t _Since = kNotJoined;
};
