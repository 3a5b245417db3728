#include "TomlDots.h"

#include <algorithm>

namespace
{

constexpr int kMostDots = 32;

// Walks over the strings and comments of TOML.
class DotCounter
{
public:
    explicit DotCounter(std::string_view iText) : _Text(iText) {}

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

} // namespace

std::size_t LineOfTooManyDots(std::string_view iText)
{
    return DotCounter(iText).CrowdedLine();
}
