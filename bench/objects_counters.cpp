#include "objects_counters.h"

#include "ZORTie.h"

ZOR_IMPLEMENT_CLASS(BenchICounter, ZORKindInterface, ZORBaseUnknown)

namespace
{

class BenchCounter : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    int Next() { return ++_Number; }

private:
    int _Number = 0;
};
ZOR_IMPLEMENT_CLASS(BenchCounter, ZORKindImplementation, ZORBaseUnknown)

class TIEBenchICounterBenchCounter final : public BenchICounter
{
    ZOR_DECLARE_TIE(BenchICounter, BenchCounter)
public:
    int Next() override { return Self()->Next(); }
};
ZOR_IMPLEMENT_TIE(BenchICounter, BenchCounter, ZORKindTie)
const ZORFillDictionary entry("BenchCounter", "BenchICounter", CreateTIEBenchICounterBenchCounter);

class HandCounter final : public HandICounter
{
public:
    int Query(const GUID& iInterface, void** oInterface) override
    {
        *oInterface = iInterface == kHandICounter ? this : nullptr;
        if (!*oInterface)
            return 1;
        AddRef();
        return 0;
    }
    unsigned AddRef() override { return ++_Count; }
    unsigned Release() override
    {
        const unsigned left = --_Count;
        if (left == 0)
            delete this;
        return left;
    }
    int Next() override { return ++_Number; }

private:
    unsigned _Count = 1;
    int _Number = 0;
};

class Counter final : public Base, public ICounter
{
public:
    int Next() override { return ++_Number; }

private:
    int _Number = 0;
};

} // namespace

ZORBaseUnknown* NewBenchCounter()
{
    return new BenchCounter;
}

HandUnknown* NewHandCounter()
{
    return new HandCounter;
}

std::unique_ptr<Base> NewCounter()
{
    return std::make_unique<Counter>();
}
