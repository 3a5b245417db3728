// Asking a component for an interface and letting it go, copying a handle and dropping the copy,
// one call through an adapter.
#include "objects_counters.h"
#include "support/Rows.h"

#include "ZORHandle.h"

#include <memory>

namespace
{

// ---- By hand

class HandHandle
{
public:
    explicit HandHandle(HandUnknown* iObject)
    {
        void* found = nullptr;
        iObject->Query(kHandICounter, &found);
        _Counter = static_cast<HandICounter*>(found);
    }
    HandHandle(const HandHandle& iOther) : _Counter(iOther._Counter)
    {
        if (_Counter)
            _Counter->AddRef();
    }
    HandHandle& operator=(const HandHandle&) = delete;
    ~HandHandle()
    {
        if (_Counter)
            _Counter->Release();
    }
    HandICounter* Get() const { return _Counter; }
    HandICounter* operator->() const { return _Counter; }

private:
    HandICounter* _Counter;
};

// ---- Rows

// `iQuery` gives something that leads to a counter, each time anew.
template <class Query>
void RunQuery(benchmark::State& ioState, Query iQuery)
{
    for (auto _ : ioState) {
        auto counter = iQuery();
        benchmark::DoNotOptimize(counter);
    }
    Check(ioState, iQuery()->Next() == 1 && iQuery()->Next() == 2);
}

template <class Handle>
void RunCopy(benchmark::State& ioState, const Handle& iHandle)
{
    for (auto _ : ioState) {
        Handle copy = iHandle;
        benchmark::DoNotOptimize(copy);
    }
    Check(ioState, Handle(iHandle)->Next() == 1);
}

template <class Counting>
void RunCall(benchmark::State& ioState, Counting* iCounter)
{
    int number = 0;
    for (auto _ : ioState)
        benchmark::DoNotOptimize(number = iCounter->Next());
    Check(ioState, number == ioState.iterations());
}

const Rows kRows([] {
    Row("query", "ours", [](benchmark::State& ioState) {
        const auto object = ZORBaseUnknown_var::Adopt(NewBenchCounter());
        RunQuery(ioState, [&] { return ZORHandle<BenchICounter>(object); });
    });
    Row("query", "reference", [](benchmark::State& ioState) {
        HandUnknown* const object = NewHandCounter();
        RunQuery(ioState, [&] { return HandHandle(object); });
        object->Release();
    });
    Row("query", "dynamic_cast", [](benchmark::State& ioState) {
        const std::unique_ptr<Base> object = NewCounter();
        RunQuery(ioState, [base = object.get()] { return dynamic_cast<ICounter*>(base); });
    });
    Row("query", "shared_ptr", [](benchmark::State& ioState) {
        const std::shared_ptr<Base> object = NewCounter();
        RunQuery(ioState, [&] { return std::dynamic_pointer_cast<ICounter>(object); });
    });

    Row("copy", "ours", [](benchmark::State& ioState) {
        RunCopy(ioState, ZORHandle<BenchICounter>(ZORBaseUnknown_var::Adopt(NewBenchCounter())));
    });
    Row("copy", "reference", [](benchmark::State& ioState) {
        HandUnknown* const object = NewHandCounter();
        RunCopy(ioState, HandHandle(object));
        object->Release();
    });
    Row("copy", "shared_ptr", [](benchmark::State& ioState) {
        const std::shared_ptr<Base> object = NewCounter();
        RunCopy(ioState, std::dynamic_pointer_cast<ICounter>(object));
    });

    Row("call", "ours", [](benchmark::State& ioState) {
        const ZORHandle<BenchICounter> counter(ZORBaseUnknown_var::Adopt(NewBenchCounter()));
        RunCall(ioState, counter.Get());
    });
    Row("call", "reference", [](benchmark::State& ioState) {
        HandUnknown* const object = NewHandCounter();
        RunCall(ioState, HandHandle(object).Get());
        object->Release();
    });
});

} // namespace
