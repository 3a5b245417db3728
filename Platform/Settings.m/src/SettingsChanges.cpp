#include "SettingsChanges.h"

const SettingsChange* SettingsChanges::Find(std::string_view iName) const
{
    if (_All.empty())
        return nullptr;
    const auto found = _Places.find(std::string(iName));
    return found == _Places.end() ? nullptr : &_All[found->second];
}

SettingsChange& SettingsChanges::Change(std::string_view iName)
{
    const auto [place, isNew] = _Places.emplace(iName, _All.size());
    if (isNew)
        _All.push_back({std::string(iName), std::nullopt});
    return _All[place->second];
}
