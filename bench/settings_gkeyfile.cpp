#include "settings_rows.h"

#include <glib.h>
#include <memory>

namespace
{

const char kGroup[] = "settings";

struct Freeing {
    void operator()(void* iMemory) const { g_free(iMemory); }
    void operator()(GKeyFile* iFile) const { g_key_file_free(iFile); }
};
using File = std::unique_ptr<GKeyFile, Freeing>;

File Load(const std::string& iPath)
{
    File file(g_key_file_new());
    g_key_file_load_from_file(file.get(), iPath.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
    return file;
}

struct WithGKeyFile {
    using Text = std::string;
    static constexpr bool kSyncs = true;

    static void Write(const std::string& iPath, const Settings& iSettings)
    {
        const File file(g_key_file_new());
        for (std::size_t i = 0; i < iSettings.names.size(); ++i)
            g_key_file_set_string(file.get(), kGroup, iSettings.names[i].c_str(),
                                  iSettings.values[i].c_str());
        g_key_file_save_to_file(file.get(), iPath.c_str(), nullptr);
    }
    explicit WithGKeyFile(const std::string& iPath) : path(iPath) {}

    Text Get(const Text& iName)
    {
        const std::unique_ptr<char, Freeing> value(
            g_key_file_get_string(Load(path).get(), kGroup, iName.c_str(), nullptr));
        return value.get();
    }
    std::vector<Text> List()
    {
        char** const names = g_key_file_get_keys(Load(path).get(), kGroup, nullptr, nullptr);
        std::vector<Text> list;
        for (char** name = names; *name; ++name)
            list.emplace_back(*name);
        g_strfreev(names);
        return list;
    }
    void Put(const Text& iName, const Text& iValue)
    {
        const File file = Load(path);
        g_key_file_set_string(file.get(), kGroup, iName.c_str(), iValue.c_str());
        g_key_file_save_to_file(file.get(), path.c_str(), nullptr);
    }

    const std::string path;
};

const Rows kRows([] { SettingsRows<WithGKeyFile>("GKeyFile"); });

} // namespace
