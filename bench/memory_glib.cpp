#include "memory_rows.h"

#include <glib-object.h>

namespace
{

struct Freeing {
    void operator()(GObject* iObject) const { g_object_unref(iObject); }
    void operator()(GKeyFile* iFile) const { g_key_file_free(iFile); }
    void operator()(char* iText) const { g_free(iText); }
};

void CountCall()
{
    ++calls;
}

std::unique_ptr<GKeyFile, Freeing> ReadFile(const std::string& iPath)
{
    std::unique_ptr<GKeyFile, Freeing> file(g_key_file_new());
    g_key_file_load_from_file(file.get(), iPath.c_str(), G_KEY_FILE_NONE, nullptr);
    return file;
}

std::string Get(GKeyFile& ioFile, const std::string& iName)
{
    const std::unique_ptr<char, Freeing> value(
        g_key_file_get_string(&ioFile, "settings", iName.c_str(), nullptr));
    return value.get();
}

const Rows kRows([] {
    SubscriberMemory(
        "GLib",
        [] {
            void* const object = g_object_new(G_TYPE_OBJECT, nullptr);
            return std::unique_ptr<GObject, Freeing>(static_cast<GObject*>(object));
        },
        [](GObject& ioSender) {
            g_signal_connect_swapped(&ioSender, "notify", G_CALLBACK(CountCall), nullptr);
        },
        [](GObject& ioSender) { g_signal_emit_by_name(&ioSender, "notify", nullptr); });
    SettingMemory("GLib", true, ReadFile, Get);
});

} // namespace
