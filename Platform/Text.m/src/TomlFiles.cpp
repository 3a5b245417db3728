#include "TomlFiles.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

std::vector<std::string> TomlFilesIn(const std::string& iDirectory)
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
