#include "ZORSettingDirectories.h"

#include "SettingsPath.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace
{

std::vector<std::string> SettingsIn(const std::string& iDirectory)
{
    std::vector<std::string> names;
    std::error_code failure;
    for (std::filesystem::directory_iterator each(iDirectory, failure), end;
         !failure && each != end; each.increment(failure)) {
        const std::filesystem::path name = each->path().filename();
        std::error_code ignored;
        if (name.extension() == ".toml" && each->is_regular_file(ignored))
            names.push_back(name.stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

std::vector<ZORSettingDirectory> ZORSettingDirectories()
{
    std::vector<ZORSettingDirectory> all;
    for (std::string& path : SettingsDirectories()) {
        std::vector<std::string> names = SettingsIn(path);
        all.push_back({std::move(path), std::move(names)});
    }
    return all;
}
