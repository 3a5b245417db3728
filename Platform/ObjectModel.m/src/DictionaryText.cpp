#include "TomlLibrary.h"

#include "DictionaryText.h"

#include <algorithm>
#include <optional>

namespace
{

constexpr char kEntries[] = "adapter"; // the tables [[adapter]]

// Each mistake of notation costs a pass over the text: a file with more of them is no dictionary.
constexpr int kMostPasses = 20;

// Room for the longest path. The TOML library needs stack for each part of a dotted name.
constexpr std::size_t kLongestLine = 8192;

std::string Quoted(std::string_view iName)
{
    return std::string(1, '"').append(iName).append(1, '"');
}

class Reader
{
public:
    explicit Reader(std::string_view iText) : _Text(iText) {}

    DictionaryText Read()
    {
        LeaveLongLinesOut();
        for (int passes = 0; !ReadSound(); ++passes)
            if (passes == kMostPasses) {
                Note(_DamagedLine, "too many mistakes: the file is left out");
                return std::move(_Result);
            }
        const auto byLine = [](const auto& left, const auto& right) {
            return left.line < right.line;
        };
        std::stable_sort(_Result.mistakes.begin(), _Result.mistakes.end(), byLine);
        return std::move(_Result);
    }

private:
    void Note(std::size_t iLine, std::string iWhat)
    {
        _Result.mistakes.push_back({iLine, std::move(iWhat)});
    }

    void LeaveLongLinesOut()
    {
        std::size_t begin = 0;
        for (std::size_t line = 1; begin < _Text.size(); ++line) {
            const std::size_t end = std::min(_Text.find('\n', begin), _Text.size());
            if (end - begin > kLongestLine) {
                Note(line, "the line is longer than 8192 bytes");
                BlankOut(line);
            }
            begin = end + 1;
        }
    }

    // Takes the entries and returns true when the notation is sound; else blanks the table around
    // the damage out.
    bool ReadSound()
    {
        const toml::parse_result parsed = toml::parse(_Text);
        if (parsed) {
            TakeTop(parsed.table());
            return true;
        }
        const std::size_t line = parsed.error().source().begin.line;
        if (line != _DamagedLine) // else the end of the file: the same mistake once more
            Note(line, TomlComplaint(parsed.error(), _Text));
        _DamagedLine = line;
        BlankOut(line);
        return false;
    }

    static bool BeginsTable(std::string_view iLine)
    {
        const std::size_t at = iLine.find_first_not_of(" \t");
        return at != std::string_view::npos && iLine[at] == '[';
    }

    // Overwrites the table that the line belongs to with blanks; the lines keep their numbers.
    void BlankOut(std::size_t iLine)
    {
        std::size_t begin = 0;
        std::size_t offset = 0;
        for (std::size_t line = 1; offset < _Text.size(); ++line) {
            const std::size_t next = std::min(_Text.find('\n', offset), _Text.size() - 1) + 1;
            if (BeginsTable(std::string_view(_Text).substr(offset, next - offset))) {
                if (line > iLine)
                    break;
                begin = offset;
            }
            offset = next;
        }
        std::replace_if(
            _Text.begin() + static_cast<std::ptrdiff_t>(begin),
            _Text.begin() + static_cast<std::ptrdiff_t>(offset),
            [](char each) { return each != '\n'; }, ' ');
    }

    void TakeTop(const toml::table& iTop)
    {
        for (const auto& [key, node] : iTop) {
            const toml::array* const tables = node.as_array();
            if (key.str() != kEntries || !tables) {
                Note(key.source().begin.line,
                     Quoted(key.str()) + " means nothing here: an entry is a table [[adapter]]");
                continue;
            }
            for (const toml::node& each : *tables)
                if (const toml::table* const table = each.as_table())
                    TakeEntry(*table);
                else
                    Note(each.source().begin.line, "an entry is a table [[adapter]]");
        }
    }

    void TakeEntry(const toml::table& iTable)
    {
        const std::size_t line = iTable.source().begin.line;
        std::optional<std::string> className = Get(iTable, "class");
        std::optional<std::string> interfaceName = Get(iTable, "interface");
        std::optional<std::string> library = Get(iTable, "library");
        if (!className || !interfaceName || !library)
            return;
        std::optional<std::string> creator = iTable.contains("creator")
                                                 ? Get(iTable, "creator")
                                                 : "CreateTIE" + *interfaceName + *className;
        if (!creator)
            return;
        NoteOtherKeys(iTable);
        _Result.entries.push_back({std::move(*className), std::move(*interfaceName),
                                   std::move(*library), std::move(*creator), line});
    }

    // The text of a key, if it is one; else the mistake is noted.
    std::optional<std::string> Get(const toml::table& iTable, const char* iKey)
    {
        const toml::node* const node = iTable.get(iKey);
        const toml::value<std::string>* const value = node ? node->as_string() : nullptr;
        const auto refuse = [&](const toml::node& where, const char* why) {
            Note(where.source().begin.line,
                 Quoted(iKey).append(" ").append(why).append(": the entry is left out"));
            return std::nullopt;
        };
        if (!node)
            return refuse(iTable, "is missing");
        if (!value)
            return refuse(*node, "is no text");
        if (value->get().empty() || value->get().find('\0') != std::string::npos)
            return refuse(*node, "is empty or holds a NUL");
        return value->get();
    }

    void NoteOtherKeys(const toml::table& iTable)
    {
        for (const auto& [key, node] : iTable)
            if (key.str() != "class" && key.str() != "interface" && key.str() != "library" &&
                key.str() != "creator")
                Note(key.source().begin.line, Quoted(key.str()) + " means nothing in an entry");
    }

    std::string _Text;
    DictionaryText _Result;
    std::size_t _DamagedLine = 0;
};

} // namespace

DictionaryText ReadDictionaryText(std::string_view iText)
{
    return Reader(iText).Read();
}
