#pragma once

#include <cstddef>

// What the whole process allocates with `new`, for test programs named by kw_replace_allocation.
namespace Allocations
{

// How many there were so far.
long Count();

// While it lives, allocations fail after that many more.
class FailAfter
{
public:
    explicit FailAfter(long iCount);
    ~FailAfter();
    FailAfter(const FailAfter&) = delete;
    FailAfter& operator=(const FailAfter&) = delete;
};

} // namespace Allocations
