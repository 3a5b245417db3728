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
    long Count() const { return Total() - _TotalBefore; }
    // How many more pieces of memory are in use than when this object was made.
    long Live() const { return InUse() - _InUseBefore; }

    static std::atomic<long>& Total()
    {
        static std::atomic<long> total{0};
        return total;
    }
    static std::atomic<long>& InUse()
    {
        static std::atomic<long> inUse{0};
        return inUse;
    }
    static std::atomic<bool>& Failing()
    {
        static std::atomic<bool> failing{false};
        return failing;
    }

private:
    long _TotalBefore = Total();
    long _InUseBefore = InUse();
};

// While it lives, operator new finds no memory.
class ScopedMemoryShortage
{
public:
    ScopedMemoryShortage() { CountedAllocations::Failing() = true; }
    ~ScopedMemoryShortage() { CountedAllocations::Failing() = false; }
    ScopedMemoryShortage(const ScopedMemoryShortage&) = delete;
    ScopedMemoryShortage& operator=(const ScopedMemoryShortage&) = delete;
};

// Not inlined: a compiler that sees malloc and free inside takes them for a mismatch.
#define KW_NOT_INLINED __attribute__((noinline))

KW_NOT_INLINED void* operator new(std::size_t iSize, const std::nothrow_t&) noexcept
{
    void* const memory = CountedAllocations::Failing() ? nullptr : std::malloc(iSize ? iSize : 1);
    ++CountedAllocations::Total();
    if (memory)
        ++CountedAllocations::InUse();
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
        --CountedAllocations::InUse();
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

#undef KW_NOT_INLINED
