#include "ZORMsgCatalogDirectories.h"

#include "CatalogSearch.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace
{

// Adds the catalogs that lie in a directory itself.
void AddCatalogs(const std::string& iDirectory, const std::string& iPrefix,
                 std::vector<std::string>& oNames)
{
    std::error_code failure;
    for (std::filesystem::directory_iterator each(iDirectory, failure), end;
         !failure && each != end; each.increment(failure)) {
        const std::filesystem::path name = each->path().filename();
        std::error_code ignored;
        if (name.extension() == ".toml" && each->is_regular_file(ignored))
            oNames.push_back(iPrefix + name.stem().string());
    }
}

std::vector<std::string> CatalogsIn(const std::string& iDirectory)
{
    std::vector<std::string> names;
    AddCatalogs(iDirectory, "", names);
    for (const std::string& locale : LocalesIn(iDirectory))
        AddCatalogs(std::string(iDirectory).append("/").append(locale),
                    std::string(locale).append("/"), names);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

std::vector<ZORMsgCatalogDirectory> ZORMsgCatalogDirectories()
{
    std::vector<ZORMsgCatalogDirectory> all;
    for (std::string& path : CatalogDirectories()) {
        std::vector<std::string> names = CatalogsIn(path);
        all.push_back({std::move(path), std::move(names)});
    }
    return all;
}
