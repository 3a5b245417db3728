#include "paths_site.h"

#include <glib.h>

namespace
{

std::string Seek(const std::string& iName, const std::string& iPath)
{
    std::string found;
    char** const directories = g_strsplit(iPath.c_str(), ":", -1);
    for (char** each = directories; *each && found.empty(); ++each) {
        char* const candidate = g_build_filename(*each, iName.c_str(), nullptr);
        if (g_file_test(candidate, G_FILE_TEST_EXISTS))
            found = candidate;
        g_free(candidate);
    }
    g_strfreev(directories);
    return found;
}

const Rows kRows([] { SeekFileRows<std::string>("GLib", Seek); });

} // namespace
