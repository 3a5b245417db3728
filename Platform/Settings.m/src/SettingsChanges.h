#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// What is to become of an attribute: the strings it gets or, with none, its removal.
struct SettingsChange {
    std::string name;
    std::optional<std::vector<std::string>> items;
};

// Changes that are not saved yet, the last one of each name, in the order the names came up.
class SettingsChanges
{
public:
    void Write(std::string_view iName, std::vector<std::string> iItems)
    {
        Change(iName).items = std::move(iItems);
    }
    void Remove(std::string_view iName) { Change(iName).items.reset(); }

    bool IsEmpty() const { return _All.empty(); }
    const std::vector<SettingsChange>& All() const { return _All; }
    // The change of that name, or null.
    const SettingsChange* Find(std::string_view iName) const;

private:
    SettingsChange& Change(std::string_view iName);

    std::vector<SettingsChange> _All;
    std::unordered_map<std::string, std::size_t> _Places;
};
