#pragma once

#include "Descriptor.h"

// An open file that no child shares: one that is forked while it is open finds it closed, and so
// cannot keep a lock on it when this process is gone.
class UnsharedDescriptor
{
public:
    UnsharedDescriptor() = default;
    // Opens the file as openat does, and tells of an error by errno.
    UnsharedDescriptor(int iDirectory, const char* iName, int iFlags);
    UnsharedDescriptor(UnsharedDescriptor&&) noexcept = default;
    UnsharedDescriptor& operator=(UnsharedDescriptor&&) noexcept = default;
    ~UnsharedDescriptor();

    int Get() const { return _File.Get(); }
    explicit operator bool() const { return bool(_File); }

private:
    Descriptor _File;
};
