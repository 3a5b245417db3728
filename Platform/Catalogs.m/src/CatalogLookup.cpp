#include "CatalogLookup.h"

#include "CatalogFile.h"
#include "CatalogSearch.h"

#include <algorithm>

CatalogLookup::CatalogLookup(std::string_view iCatalog)
{
    for (std::string& path : CatalogPaths(iCatalog))
        _Files.push_back({std::move(path), false, nullptr});
}

const CatalogText* CatalogLookup::Read(File& ioFile)
{
    if (!ioFile.read)
        ioFile.text = ReadCatalog(ioFile.path);
    ioFile.read = true;
    return ioFile.text.get();
}

const std::string* CatalogLookup::Find(std::string_view iKey)
{
    for (File& file : _Files)
        if (const CatalogText* const catalog = Read(file))
            if (const auto found = catalog->texts.find(iKey); found != catalog->texts.end())
                return &found->second;
    return nullptr;
}

bool CatalogLookup::Exists()
{
    return std::any_of(_Files.begin(), _Files.end(),
                       [](File& file) { return Read(file) != nullptr; });
}
