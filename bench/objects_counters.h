#pragma once

#include "ZORClass.h"

#include <memory>

// Counters to compare with. Their classes are in a source of their own, so that a call goes through
// the table of virtual operations.

// Ours: a component with an interface by adapter.
class BenchICounter : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    virtual int Next() = 0;
};

ZORBaseUnknown* NewBenchCounter();

// By hand: a query that compares identifiers, a plain count.
struct HandUnknown {
    virtual int Query(const GUID& iInterface, void** oInterface) = 0;
    virtual unsigned AddRef() = 0;
    virtual unsigned Release() = 0;

protected:
    ~HandUnknown() = default;
};

inline constexpr GUID kHandICounter{{0x6b, 0x0f, 0x6c, 0x1e, 0x8a, 0x53, 0x4d, 0x1c, 0x9e, 0x27,
                                     0x51, 0x0d, 0xc3, 0x44, 0xe8, 0x92}};

struct HandICounter : HandUnknown {
    virtual int Next() = 0;

protected:
    ~HandICounter() = default;
};

HandUnknown* NewHandCounter();

// With the standard library: an object with an interface beside its base.
struct Base {
    virtual ~Base() = default;
};
struct ICounter {
    virtual int Next() = 0;
    virtual ~ICounter() = default;
};

std::unique_ptr<Base> NewCounter();
