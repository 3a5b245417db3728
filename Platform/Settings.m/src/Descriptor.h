#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

// An open file, closed at the end of its scope.
class Descriptor
{
public:
    explicit Descriptor(int iNumber = -1) noexcept : _Number(iNumber) {}
    Descriptor(Descriptor&& iOther) noexcept : _Number(std::exchange(iOther._Number, -1)) {}
    Descriptor& operator=(Descriptor&& iOther) noexcept
    {
        std::swap(_Number, iOther._Number);
        return *this;
    }
    ~Descriptor()
    {
        if (_Number >= 0)
            close(_Number);
    }

    int Get() const { return _Number; }
    explicit operator bool() const { return _Number >= 0; }

    // Closes the file now; false, with errno, when the system tells of an error. It is closed then,
    // too, and a signal is no error.
    bool Close() { return close(std::exchange(_Number, -1)) == 0 || errno == EINTR; }

private:
    int _Number;
};

// The result of a system call that is made again when a signal interrupts it, but not for ever.
template <class Call>
auto Uninterrupted(Call iCall)
{
    auto result = iCall();
    for (int left = 1000; result == -1 && errno == EINTR && left > 0; --left)
        result = iCall();
    return result;
}

// Brings the names in an open directory to the disk; false, with errno, when that fails. A file
// system that has no such thing says EINVAL.
inline bool SyncDirectory(int iDirectory)
{
    return Uninterrupted([&] { return fsync(iDirectory); }) == 0 || errno == EINVAL;
}
