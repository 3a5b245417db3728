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

// The offset of the end of that line, from 1, without its line break.
std::size_t EndOfLine(std::string_view iText, std::size_t iLine)
{
    std::size_t end = iText.find('\n');
    while (--iLine > 0 && end != std::string_view::npos)
        end = iText.find('\n', end + 1);
    return std::min(end, iText.size());
}

// The library tells the end of a text as a column behind the line break of its last line.
TextPosition PlaceIn(std::string_view iText, toml::source_position iWhere)
{
    const TextPosition end = PositionOf(iText, EndOfLine(iText, iWhere.line));
    return {iWhere.line, std::min<std::size_t>(iWhere.column, end.column)};
}

} // namespace

std::optional<TomlDamage> CheckToml(std::string_view iText, std::vector<TomlName>& oNames)
{
    const toml::parse_result parsed = toml::parse(iText);
    if (!parsed)
        return TomlDamage{PlaceIn(iText, parsed.error().source().begin),
                          TomlComplaint(parsed.error(), iText)};
    for (const auto& [name, node] : parsed.table())
        oNames.push_back({std::string(name.str()), IsTable(node)});
    return std::nullopt;
}
