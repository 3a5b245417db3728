#include "Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

constexpr long kUnlimited = -1;

std::atomic<long> gCount = 0;
std::atomic<long> gLeft = kUnlimited;

} // namespace

long Allocations::Count()
{
    return gCount;
}

Allocations::FailAfter::FailAfter(long iCount)
{
    gLeft = iCount;
}

Allocations::FailAfter::~FailAfter()
{
    gLeft = kUnlimited;
}

void* operator new(std::size_t iSize)
{
    ++gCount;
    if (gLeft != kUnlimited && gLeft-- <= 0) {
        gLeft = 0;
        throw std::bad_alloc();
    }
    if (void* const memory = std::malloc(iSize ? iSize : 1))
        return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t iSize)
{
    return operator new(iSize);
}

void operator delete(void* iMemory) noexcept
{
    std::free(iMemory);
}

void operator delete(void* iMemory, std::size_t) noexcept
{
    std::free(iMemory);
}

void operator delete[](void* iMemory) noexcept
{
    std::free(iMemory);
}

void operator delete[](void* iMemory, std::size_t) noexcept
{
    std::free(iMemory);
}
