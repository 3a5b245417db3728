#include "ZORSettingDirectories.h"

#include "SettingsPath.h"
#include "TomlFiles.h"

std::vector<ZORSettingDirectory> ZORSettingDirectories()
{
    std::vector<ZORSettingDirectory> all;
    for (std::string& path : SettingsDirectories()) {
        std::vector<std::string> names = TomlFilesIn(path);
        all.push_back({std::move(path), std::move(names)});
    }
    return all;
}
