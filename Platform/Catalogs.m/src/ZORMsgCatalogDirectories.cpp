#include "ZORMsgCatalogDirectories.h"

#include "CatalogSearch.h"
#include "TomlFiles.h"

#include <algorithm>

namespace
{

std::vector<std::string> CatalogsIn(const std::string& iDirectory)
{
    std::vector<std::string> names = TomlFilesIn(iDirectory);
    for (const std::string& locale : LocalesIn(iDirectory))
        for (const std::string& each :
             TomlFilesIn(std::string(iDirectory).append("/").append(locale)))
            names.push_back(std::string(locale).append("/").append(each));
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
