#include "CatalogText.h"

#include "CatalogFailure.h"
#include "TomlLibrary.h"

#include <algorithm>

namespace
{

// A line of a catalog has one or two dots outside its texts. The TOML library needs stack for each
// part of a dotted key, so a key without end must not reach it.
constexpr int kMostDots = 32;

std::string At(const std::string& iFile, std::size_t iLine, const std::string& iRest)
{
    return "message catalog " + iFile + ": line " + std::to_string(iLine) + iRest;
}

// Walks over the strings and comments of TOML.
class DotCounter
{
public:
    explicit DotCounter(std::string_view iText) : _Text(iText) {}

    // The first line with too many dots outside strings and comments, from 1; 0 when there is none.
    std::size_t CrowdedLine()
    {
        int dots = 0;
        while (_At < _Text.size()) {
            const char each = _Text[_At];
            if (each == '\n')
                dots = 0;
            if (each == '.' && ++dots > kMostDots)
                return LineOf(_At);
            if (each == '"' || each == '\'')
                SkipString(each);
            else if (each == '#')
                SkipTo('\n');
            else
                ++_At;
        }
        return 0;
    }

private:
    std::size_t LineOf(std::size_t iAt) const
    {
        const std::string_view before = _Text.substr(0, iAt);
        return static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    }

    void SkipTo(char iCharacter) { _At = std::min(_Text.find(iCharacter, _At), _Text.size()); }

    std::size_t RunOf(char iQuote) const
    {
        return std::min(_Text.find_first_not_of(iQuote, _At), _Text.size()) - _At;
    }

    // Behind a string that is not closed the library reads nothing.
    void SkipString(char iQuote)
    {
        const std::size_t least = RunOf(iQuote) >= 3 ? 3 : 1; // quotes that open and close it
        for (_At += least; _At < _Text.size(); ++_At) {
            if (_Text[_At] == '\\' && iQuote == '"')
                ++_At;
            else if (_Text[_At] == iQuote && RunOf(iQuote) >= least)
                break;
        }
        _At = std::min(_At, _Text.size());
        _At += least == 3 ? RunOf(iQuote) : std::min(least, _Text.size() - _At);
    }

    std::string_view _Text;
    std::size_t _At = 0;
};

void Collect(CatalogText& oTexts, const std::string& iPrefix, const toml::table& iTable)
{
    for (const auto& [name, node] : iTable) {
        const std::string key = iPrefix + std::string(name.str());
        if (const toml::table* const table = node.as_table())
            Collect(oTexts, key + ".", *table);
        else if (const toml::value<std::string>* const text = node.as_string())
            oTexts.texts.emplace(key, text->get());
        else
            oTexts.others.insert(key);
    }
}

} // namespace

CatalogText ParseCatalog(const std::string& iFile, std::string_view iBytes)
{
    if (const std::size_t line = DotCounter(iBytes).CrowdedLine())
        throw CatalogFailure(At(iFile, line, ": more dots than a key can have"));
    CatalogText texts;
    try {
        Collect(texts, "", toml::parse(iBytes));
    } catch (const toml::parse_error& error) {
        const toml::source_position where = error.source().begin;
        throw CatalogFailure(At(iFile, where.line,
                                ", column " + std::to_string(where.column) + ": " +
                                    std::string(error.description())));
    }
    return texts;
}
