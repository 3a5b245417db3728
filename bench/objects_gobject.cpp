// An object of GObject, with an interface.
#include "support/Rows.h"

#include <glib-object.h>

namespace
{

struct BenchCounter {
    GObject base;
    int number;
};

struct BenchICounterInterface {
    GTypeInterface base;
    int (*next)(BenchCounter*);
};

GType InterfaceType()
{
    static const GType type = g_type_register_static_simple(G_TYPE_INTERFACE, "BenchICounter",
                                                            sizeof(BenchICounterInterface), nullptr,
                                                            0, nullptr, GTypeFlags());
    return type;
}

void SetUpInterface(gpointer iInterface, gpointer)
{
    static_cast<BenchICounterInterface*>(iInterface)->next = [](BenchCounter* iCounter) {
        return ++iCounter->number;
    };
}

GType CounterType()
{
    static const GType type = [] {
        const GType counter =
            g_type_register_static_simple(G_TYPE_OBJECT, "BenchCounter", sizeof(GObjectClass),
                                          nullptr, sizeof(BenchCounter), nullptr, GTypeFlags());
        const GInterfaceInfo info{SetUpInterface, nullptr, nullptr};
        g_type_add_interface_static(counter, InterfaceType(), &info);
        return counter;
    }();
    return type;
}

GObject* NewCounter()
{
    return G_OBJECT(g_object_new(CounterType(), nullptr));
}

int Next(GObject* iCounter)
{
    const auto* const counter =
        G_TYPE_INSTANCE_GET_INTERFACE(iCounter, InterfaceType(), BenchICounterInterface);
    return counter->next(reinterpret_cast<BenchCounter*>(iCounter));
}

void Query(benchmark::State& ioState)
{
    GObject* const object = NewCounter();
    for (auto _ : ioState) {
        auto* const counter =
            G_TYPE_CHECK_INSTANCE_CAST(object, InterfaceType(), BenchICounterInterface);
        benchmark::DoNotOptimize(counter);
        g_object_unref(g_object_ref(object));
    }
    Check(ioState, Next(object) == 1);
    g_object_unref(object);
}

void Copy(benchmark::State& ioState)
{
    GObject* const object = NewCounter();
    for (auto _ : ioState)
        g_object_unref(g_object_ref(object));
    Check(ioState, Next(object) == 1);
    g_object_unref(object);
}

const Rows kRows([] {
    Row("query", "GObject", Query);
    Row("copy", "GObject", Copy);
});

} // namespace
