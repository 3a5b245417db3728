// Making the services object and letting it go.
#include "support/Rows.h"

#include "CreateServices.h"

#include <memory>
#include <string>

namespace
{

void Make(benchmark::State& ioState)
{
    for (auto _ : ioState) {
        ZORIDuxServices_var services = CreateServices();
        benchmark::DoNotOptimize(services);
    }
    Check(ioState, CreateServices()->GetSettingSeparator() == ":");
}

// The least: an object with a separator, counted up and down again.
class HandServices
{
public:
    [[gnu::noinline]] virtual unsigned AddRef() { return ++_Count; }
    [[gnu::noinline]] virtual unsigned Release()
    {
        const unsigned left = --_Count;
        if (left == 0)
            delete this;
        return left;
    }
    virtual std::string GetSettingSeparator() { return _Separator; }

protected:
    virtual ~HandServices() = default;

private:
    unsigned _Count = 1;
    std::string _Separator = ":";
};

void MakeByHand(benchmark::State& ioState)
{
    HandServices* services = nullptr;
    for (auto _ : ioState) {
        services = new HandServices;
        benchmark::DoNotOptimize(services);
        services->AddRef();
        services->Release();
        benchmark::DoNotOptimize(services);
        services->Release();
    }
    services = new HandServices;
    Check(ioState, services->GetSettingSeparator() == ":");
    services->Release();
}

const Rows kRows([] {
    Row("make", "ours", Make);
    Row("make", "reference", MakeByHand);
});

} // namespace
