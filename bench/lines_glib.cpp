#include "lines_rows.h"

#include <glib.h>
#include <memory>

namespace
{

struct Freeing {
    void operator()(char* iText) const { g_free(iText); }
    void operator()(GIOChannel* iChannel) const { g_io_channel_unref(iChannel); }
};
using Text = std::unique_ptr<char, Freeing>;
using Channel = std::unique_ptr<GIOChannel, Freeing>;

// For bytes as they are.
Channel Open(const char* iPath, const char* iMode)
{
    Channel channel(g_io_channel_new_file(iPath, iMode, nullptr));
    g_io_channel_set_encoding(channel.get(), nullptr, nullptr);
    return channel;
}

std::vector<Text> Read(const char* iPath)
{
    std::vector<Text> lines;
    const Channel channel = Open(iPath, "r");
    char* line = nullptr;
    while (g_io_channel_read_line(channel.get(), &line, nullptr, nullptr, nullptr) ==
           G_IO_STATUS_NORMAL)
        lines.emplace_back(line);
    return lines;
}

void Write(const std::vector<Text>& iLines, const char* iPath)
{
    const Channel channel = Open(iPath, "w");
    gsize written = 0;
    for (const Text& each : iLines)
        g_io_channel_write_chars(channel.get(), each.get(), -1, &written, nullptr);
    g_io_channel_shutdown(channel.get(), TRUE, nullptr);
}

const Rows kRows([] {
    ReadRow("read", "GLib", Read);
    WriteRow("GLib", Read, Write);
});

} // namespace
