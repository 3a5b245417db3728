#pragma once

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

// Counts what operator new hands out, and can make it fail. Replaces the program's operator new:
// include it in one source of a test program.
class CountedAllocations
{
public:
    // Allocations of the process since this object was made.
    long Count() const { return _Total - _TotalBefore; }
    // How many more pieces of memory are in use than when this object was made.
    long Live() const { return _InUse - _InUseBefore; }

private:
    friend class ScopedMemoryShortage;
    friend void* operator new(std::size_t, const std::nothrow_t&) noexcept;
    friend void operator delete(void*) noexcept;

    static constexpr long kNoShortage = -1;

    static bool Fails()
    {
        long left = _Left.load(std::memory_order_relaxed);
        while (left > 0 && !_Left.compare_exchange_weak(left, left - 1, std::memory_order_relaxed))
            ;
        return left == 0;
    }

    // Counted in relaxed order: counting must not order the threads of a test, which would hide
    // their races.
    static void Add(std::atomic<long>& ioCounter, long iNumber)
    {
        ioCounter.fetch_add(iNumber, std::memory_order_relaxed);
    }

    static inline std::atomic<long> _Total{0};
    static inline std::atomic<long> _InUse{0};
    static inline std::atomic<long> _Left{kNoShortage}; // allocations before memory is short

    long _TotalBefore = _Total;
    long _InUseBefore = _InUse;
};

// While it lives, operator new finds memory `iAllocations` more times and then none.
class ScopedMemoryShortage
{
public:
    explicit ScopedMemoryShortage(long iAllocations = 0)
    {
        CountedAllocations::_Left = iAllocations;
    }
    ~ScopedMemoryShortage() { CountedAllocations::_Left = CountedAllocations::kNoShortage; }
    ScopedMemoryShortage(const ScopedMemoryShortage&) = delete;
    ScopedMemoryShortage& operator=(const ScopedMemoryShortage&) = delete;
};

// Not inlined: a compiler that sees malloc and free inside takes them for a mismatch.
#define KW_NOT_INLINED __attribute__((noinline))

KW_NOT_INLINED void* operator new(std::size_t iSize, const std::nothrow_t&) noexcept
{
    CountedAllocations::Add(CountedAllocations::_Total, 1);
    if (CountedAllocations::Fails())
        return nullptr;
    void* const memory = std::malloc(iSize ? iSize : 1);
    if (memory)
        CountedAllocations::Add(CountedAllocations::_InUse, 1);
    return memory;
}

KW_NOT_INLINED void* operator new(std::size_t iSize)
{
    if (void* const memory = operator new(iSize, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

KW_NOT_INLINED void operator delete(void* iMemory) noexcept
{
    if (iMemory)
        CountedAllocations::Add(CountedAllocations::_InUse, -1);
    std::free(iMemory);
}

KW_NOT_INLINED void operator delete(void* iMemory, std::size_t) noexcept
{
    operator delete(iMemory);
}

KW_NOT_INLINED void operator delete(void* iMemory, const std::nothrow_t&) noexcept
{
    operator delete(iMemory);
}

// The forms for arrays have to be replaced too: a sanitizer brings its own, which do not call
// these.
KW_NOT_INLINED void* operator new[](std::size_t iSize, const std::nothrow_t&) noexcept
{
    return operator new(iSize, std::nothrow);
}

KW_NOT_INLINED void* operator new[](std::size_t iSize)
{
    return operator new(iSize);
}

KW_NOT_INLINED void operator delete[](void* iMemory) noexcept
{
    operator delete(iMemory);
}

KW_NOT_INLINED void operator delete[](void* iMemory, std::size_t) noexcept
{
    operator delete(iMemory);
}

KW_NOT_INLINED void operator delete[](void* iMemory, const std::nothrow_t&) noexcept
{
    operator delete(iMemory);
}

#undef KW_NOT_INLINED
