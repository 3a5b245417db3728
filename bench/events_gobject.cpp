// Dispatch by signals of GObject, which knows them by name.
#include "events_rows.h"

#include <glib-object.h>

namespace
{

void Count(GObject*, gpointer, gpointer iCalls)
{
    ++*static_cast<long*>(iCalls);
}

void DefineEvents(const void* iClass)
{
    const GType type = G_TYPE_FROM_CLASS(iClass);
    const auto define = [&](const std::string& iEvent) {
        if (g_signal_lookup(iEvent.c_str(), type) == 0)
            g_signal_new(iEvent.c_str(), type, G_SIGNAL_RUN_LAST, 0, nullptr, nullptr, nullptr,
                         G_TYPE_NONE, 1, G_TYPE_POINTER);
    };
    ForEachCallback(1, define);
}

GType SenderType()
{
    static const GType type = g_type_register_static_simple(
        G_TYPE_OBJECT, "BenchSender", sizeof(GObjectClass),
        [](gpointer iClass, gpointer) { DefineEvents(iClass); }, sizeof(GObject), nullptr,
        GTypeFlags());
    return type;
}

void Dispatch(benchmark::State& ioState, int iSubscribers)
{
    long calls = 0;
    void* const sender = g_object_new(SenderType(), nullptr);
    ForEachCallback(iSubscribers, [&](const std::string& iEvent) {
        g_signal_connect(sender, iEvent.c_str(), G_CALLBACK(Count), &calls);
    });
    for (auto _ : ioState)
        g_signal_emit_by_name(sender, kEvent, nullptr);
    g_object_unref(sender);
    Check(ioState, calls == ioState.iterations() * iSubscribers);
}

const Rows kRows([] {
    for (const int subscribers : kSubscribers)
        DispatchRow(subscribers, "GObject", Dispatch);
});

} // namespace
