#pragma once

#include <cerrno>
#include <cstddef>

// Counts what malloc hands out, to operator new and to the C library itself as well, and can make
// it fail. Replaces the program's malloc: include it in one source of a test program, and not in
// one built with a sanitizer, which brings its own. For one thread.
class CountedMemory
{
public:
    // How many more pieces of memory are in use than when this object was made.
    long Live() const { return _InUse - _InUseBefore; }

    // For the functions that stand in.
    static bool Fails()
    {
        if (_Left != 0) {
            _Left -= _Left > 0;
            return false;
        }
        _Met = true;
        _Left = _ForGood ? 0 : kNoShortage;
        errno = ENOMEM;
        return true;
    }
    static void* Counted(void* iMemory)
    {
        _InUse += iMemory != nullptr;
        return iMemory;
    }
    static void Forget(const void* iMemory) { _InUse -= iMemory != nullptr; }

private:
    friend class ScopedMallocShortage;

    static constexpr long kNoShortage = -1;

    static inline long _InUse = 0;
    static inline long _Left = kNoShortage; // allocations before memory is short
    static inline bool _ForGood = false;
    static inline bool _Met = false;

    long _InUseBefore = _InUse;
};

// While it lives, `iAllocations` more allocations find memory, and then the next one does not or,
// for good, none does.
class ScopedMallocShortage
{
public:
    ScopedMallocShortage(long iAllocations, bool iForGood)
    {
        CountedMemory::_ForGood = iForGood;
        CountedMemory::_Met = false;
        CountedMemory::_Left = iAllocations;
    }
    ~ScopedMallocShortage() { CountedMemory::_Left = CountedMemory::kNoShortage; }
    ScopedMallocShortage(const ScopedMallocShortage&) = delete;
    ScopedMallocShortage& operator=(const ScopedMallocShortage&) = delete;

    // Whether any allocation found no memory, in this scope or the last one.
    static bool WasMet() { return CountedMemory::_Met; }
};

extern "C" {

void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void __libc_free(void*);

void* malloc(std::size_t iSize) noexcept
{
    return CountedMemory::Fails() ? nullptr : CountedMemory::Counted(__libc_malloc(iSize));
}

void* calloc(std::size_t iCount, std::size_t iSize) noexcept
{
    return CountedMemory::Fails() ? nullptr : CountedMemory::Counted(__libc_calloc(iCount, iSize));
}

void* realloc(void* iMemory, std::size_t iSize) noexcept
{
    if (CountedMemory::Fails())
        return nullptr;
    void* const moved = __libc_realloc(iMemory, iSize);
    if (moved || iSize == 0)
        CountedMemory::Forget(iMemory);
    return CountedMemory::Counted(moved);
}

void free(void* iMemory) noexcept
{
    CountedMemory::Forget(iMemory);
    __libc_free(iMemory);
}

} // extern "C"
