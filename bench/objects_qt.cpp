// An object of Qt, with an interface.
#include "support/Rows.h"

#include <QObject>

class BenchICounter
{
public:
    virtual int Next() = 0;
    virtual ~BenchICounter() = default;
};
Q_DECLARE_INTERFACE(BenchICounter, "bench.ICounter")

namespace
{

class BenchCounter final : public QObject, public BenchICounter
{
    Q_OBJECT
    Q_INTERFACES(BenchICounter)
public:
    int Next() override { return ++_Number; }

private:
    int _Number = 0;
};

const Rows kRows([] {
    Row("query", "qobject_cast", [](benchmark::State& ioState) {
        BenchCounter counter;
        QObject* object = &counter;
        benchmark::DoNotOptimize(object);
        for (auto _ : ioState)
            benchmark::DoNotOptimize(qobject_cast<BenchICounter*>(object));
        Check(ioState, qobject_cast<BenchICounter*>(object)->Next() == 1);
    });
});

} // namespace

#include "objects_qt.moc"
