#include "TomlCheck.h"

#include "TomlLibrary.h"

#include <algorithm>

namespace
{

bool IsTable(const toml::node& iNode)
{
    const toml::array* const list = iNode.as_array();
    if (!list)
        return iNode.is_table();
    return std::any_of(list->begin(), list->end(),
                       [](const toml::node& each) { return each.is_table() || each.is_array(); });
}

} // namespace

std::optional<TomlDamage> CheckToml(std::string_view iText, std::vector<TomlName>& oNames)
{
    try {
        for (const auto& [name, node] : toml::parse(iText))
            oNames.push_back({std::string(name.str()), IsTable(node)});
        return std::nullopt;
    } catch (const toml::parse_error& error) {
        const toml::source_position where = error.source().begin;
        return TomlDamage{{where.line, where.column}, std::string(error.description())};
    }
}
