#include "TomlLibrary.h"

#include "CatalogText.h"

#include "CatalogFailure.h"
#include "TomlDots.h"

namespace
{

std::string At(const std::string& iFile, std::size_t iLine, const std::string& iRest)
{
    return "message catalog " + iFile + ": line " + std::to_string(iLine) + iRest;
}

// A text that has a NUL would be cut there.
bool IsWhole(const toml::value<std::string>& iText)
{
    return iText.get().find('\0') == std::string::npos;
}

void Collect(CatalogText& oTexts, const std::string& iPrefix, const toml::table& iTable)
{
    for (const auto& [name, node] : iTable) {
        const std::string key = iPrefix + std::string(name.str());
        if (const toml::table* const table = node.as_table())
            Collect(oTexts, key + ".", *table);
        else if (const toml::value<std::string>* const text = node.as_string();
                 text && IsWhole(*text))
            oTexts.texts.emplace(key, text->get());
        else
            oTexts.others.insert(key);
    }
}

} // namespace

CatalogText ParseCatalog(const std::string& iFile, std::string_view iBytes)
{
    if (const std::size_t line = LineOfTooManyDots(iBytes))
        throw CatalogFailure(At(iFile, line, ": more dots than a key can have"));
    const toml::parse_result parsed = toml::parse(iBytes);
    if (!parsed) {
        const toml::source_position where = parsed.error().source().begin;
        throw CatalogFailure(At(iFile, where.line,
                                ", column " + std::to_string(where.column) + ": " +
                                    TomlComplaint(parsed.error(), iBytes)));
    }
    CatalogText texts;
    Collect(texts, "", parsed.table());
    return texts;
}
