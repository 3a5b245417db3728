#include "SettingsScanner.h"

#include "SettingsFailure.h"

#include <algorithm>
#include <cstring>

namespace
{

using Kind = SettingsEntry::Kind;

// The TOML library searches its tables one by one and needs stack for each level of them.
constexpr std::size_t kMostKeyParts = 20000;
constexpr std::size_t kMostKeyPartsOfStatement = 1000;

constexpr char kLoneNul[] = "\\u0000 stands for nothing here: it must be followed by a character "
                            "from \\u0080 to \\u00FF, and both together are that one byte";

bool IsDigit(char iCharacter)
{
    return iCharacter >= '0' && iCharacter <= '9';
}

// Whether this is surely a value of TOML: a truth value or a whole number that fits 64 bits.
bool IsPlainScalar(std::string_view iSource)
{
    if (iSource == "true" || iSource == "false")
        return true;
    if (iSource.starts_with('+') || iSource.starts_with('-'))
        iSource.remove_prefix(1);
    constexpr std::size_t kSurelyFits = 18;
    const bool leadingZero = iSource.size() > 1 && iSource[0] == '0';
    return !iSource.empty() && iSource.size() <= kSurelyFits && !leadingZero &&
           std::all_of(iSource.begin(), iSource.end(), IsDigit);
}

Quoting QuotingOf(char iQuote, bool iMultiLine)
{
    if (iQuote == '"')
        return iMultiLine ? Quoting::MultiBasic : Quoting::Basic;
    return iMultiLine ? Quoting::MultiLiteral : Quoting::Literal;
}

} // namespace

SettingsScanner::SettingsScanner(const std::string& iFile, SettingsText& ioText, std::size_t iFrom,
                                 std::size_t iStop)
    : _File(iFile), _Text(ioText), _Begin(ioText._Bytes.data()),
      _End(_Begin + ioText._Bytes.size()), _At(_Begin + iFrom)
{
    const char* const stop = _Begin + iStop;
    while (_Complete && _At < stop)
        _Complete = ReadStatement();
    _Complete = _Complete && _At == stop;
}

bool SettingsScanner::ReadStatement()
{
    _KeyPartsOfStatement = 0;
    SkipBlanks();
    switch (*_At) {
    case '#':
    case '\r':
    case '\n':
        return EndLine();
    case '[':
        return ReadHeader();
    case '\0':
        return _At == _End;
    default:
        return ReadKeyValue();
    }
}

bool SettingsScanner::ReadHeader()
{
    _Sure = false;
    _InTable = true;
    CountKeyPart();
    const char* const begin = _At;
    const std::string_view closing = StartsWith("[[") ? "]]" : "]";
    _At += closing.size();
    SkipBlanks();
    Key key;
    if (!ReadKey(key) || !StartsWith(closing))
        return false;
    _At += closing.size();
    key.begin = begin;
    AddTable(key);
    return EndLine();
}

bool SettingsScanner::ReadKeyValue()
{
    Key key;
    if (!ReadKey(key) || *_At != '=')
        return false;
    ++_At;
    SkipBlanks();
    _Keep = !_InTable && !key.dotted;
    SettingsEntry entry{{}, Offset(key.begin), {}, 0, 0, Kind::Table};
    if (!ReadValue(entry))
        return false;
    if (_Keep && entry.IsAttribute())
        AddAttribute(entry, key);
    else if (!_InTable)
        AddTable(key);
    return EndLine();
}

bool SettingsScanner::ReadKey(Key& oKey)
{
    SettingsItem part;
    bool plain;
    oKey = {_At, std::nullopt, false};
    if (!ReadKeyPart(part, plain))
        return false;
    const TomlDecoding decoding = plain ? TomlDecoding::Done : Decode(part);
    if (decoding == TomlDecoding::Malformed)
        return false;
    if (decoding == TomlDecoding::Done)
        oKey.name = part.text;
    SkipBlanks();
    while (*_At == '.') {
        oKey.dotted = true;
        _Sure = false;
        CountKeyPart();
        ++_At;
        SkipBlanks();
        if (!ReadKeyPart(part, plain))
            return false;
        SkipBlanks();
    }
    return true;
}

bool SettingsScanner::ReadKeyPart(SettingsItem& oPart, bool& oPlain)
{
    if (*_At == '"' || *_At == '\'') {
        if (!ReadString(oPart, oPlain))
            return false;
        return oPart.quoting == Quoting::Basic || oPart.quoting == Quoting::Literal;
    }
    const char* const begin = _At;
    while (IsBareKeyCharacter(*_At))
        ++_At;
    oPart.text = Range(begin, _At);
    oPlain = true;
    return _At != begin;
}

bool SettingsScanner::ReadValue(SettingsEntry& ioEntry)
{
    if (*_At == '{' || (*_At == '[' && !_Keep))
        return SkipNested();
    const char* const begin = _At;
    ioEntry.firstItem = static_cast<std::uint32_t>(_Text._Items.size());
    ioEntry.kind = *_At == '[' ? Kind::List : Kind::Value;
    if (!(*_At == '[' ? ReadList(ioEntry) : ReadItem("#\r\n")))
        return false;
    ioEntry.source = Range(begin, _At);
    ioEntry.itemCount = static_cast<std::uint32_t>(_Text._Items.size()) - ioEntry.firstItem;
    return true;
}

bool SettingsScanner::ReadList(SettingsEntry& ioEntry)
{
    const char* const begin = _At++;
    while (SkipListSpace() && *_At != ']') {
        if (*_At == '[' || *_At == '{') {
            _At = begin;
            return SkipTable(ioEntry);
        }
        if (!ReadItem(",]#\r\n") || !SkipListSpace())
            return false;
        if (*_At != ']' && *_At++ != ',')
            return false;
    }
    return *_At == ']' && ++_At;
}

bool SettingsScanner::ReadItem(std::string_view iTerminators)
{
    SettingsItem item;
    bool plain = true;
    const bool quoted = *_At == '"' || *_At == '\'';
    if (!(quoted ? ReadString(item, plain) : ReadScalar(item, iTerminators)))
        return false;
    if (!_Keep)
        return true;
    const TomlDecoding decoding = plain ? TomlDecoding::Done : Decode(item);
    if (decoding == TomlDecoding::LoneNul)
        Refuse(_Begin + item.source.begin, kLoneNul);
    _Text._Items.push_back(item);
    return decoding != TomlDecoding::Malformed;
}

bool SettingsScanner::ReadString(SettingsItem& oItem, bool& oPlain)
{
    const char* const begin = _At;
    const bool multiLine = _At[1] == *_At && _At[2] == *_At;
    oItem.quoting = QuotingOf(*_At, multiLine);
    _At += multiLine ? 3 : 1;
    if (multiLine)
        _At += LeadingLineBreak({_At, static_cast<std::size_t>(_End - _At)}).size();
    const TomlStringEnd end = FindTomlStringEnd(_At, _End, oItem.quoting);
    if (!end.delimiter) {
        _At = begin;
        return false;
    }
    oPlain = end.plain;
    oItem.text = Range(_At, end.delimiter);
    _At = end.delimiter + (multiLine ? 3 : 1);
    oItem.source = Range(begin, _At);
    return true;
}

bool SettingsScanner::ReadScalar(SettingsItem& oItem, std::string_view iTerminators)
{
    const char* const begin = _At;
    while (_At != _End && iTerminators.find(*_At) == std::string_view::npos)
        ++_At;
    while (_At != begin && (_At[-1] == ' ' || _At[-1] == '\t'))
        --_At;
    oItem.quoting = Quoting::Bare;
    oItem.source = oItem.text = Range(begin, _At);
    if (!IsPlainScalar({begin, static_cast<std::size_t>(_At - begin)}))
        _Sure = false;
    return _At != begin;
}

// A list of tables or of lists is no attribute.
bool SettingsScanner::SkipTable(SettingsEntry& ioEntry)
{
    _Text._Items.resize(ioEntry.firstItem);
    ioEntry.kind = Kind::Table;
    return SkipNested();
}

// Skips a list or an inline table, however deep, without recursion.
bool SettingsScanner::SkipNested()
{
    _Sure = false;
    std::string open; // the brackets that are
    bool inKey = false;
    do {
        const char each = *_At;
        if (each == '"' || each == '\'') {
            SettingsItem item;
            bool plain;
            if (!ReadString(item, plain))
                return false;
            continue;
        }
        if (each == '#') {
            SkipComment();
            continue;
        }
        if (each == '[' || each == '{')
            open += each;
        else if (each == ']' || each == '}')
            open.pop_back();
        else if (each == '.' && inKey)
            CountKeyPart();
        else if (_At == _End)
            return false;
        ++_At;
        if (each == '{' || each == ',')
            inKey = open.back() == '{';
        else if (each == '=' || each == '[')
            inKey = false;
    } while (!open.empty());
    return true;
}

// Blanks, line breaks and comments, as a list may hold between its items.
bool SettingsScanner::SkipListSpace()
{
    while (true) {
        SkipBlanks();
        if (*_At == '#')
            SkipComment();
        else if (*_At == '\n' || *_At == '\r')
            ++_At;
        else
            return _At != _End;
    }
}

// What may stand behind a statement: blanks, a comment, the line break.
bool SettingsScanner::EndLine()
{
    SkipBlanks();
    if (*_At == '#')
        SkipComment();
    if (*_At == '\r' && _At[1] == '\n')
        ++_At;
    return *_At == '\n' ? ++_At, true : _At == _End;
}

void SettingsScanner::SkipComment()
{
    const auto* const end =
        static_cast<const char*>(std::memchr(_At, '\n', static_cast<std::size_t>(_End - _At)));
    _At = end ? end : _End;
}

void SettingsScanner::SkipBlanks()
{
    while (*_At == ' ' || *_At == '\t')
        ++_At;
}

TomlDecoding SettingsScanner::Decode(SettingsItem& ioItem)
{
    const std::size_t begin = _Text._Decoded.size();
    const TomlDecoding decoding =
        DecodeTomlString(_Text.Source(ioItem.text), ioItem.quoting, _Text._Decoded);
    ioItem.text = _Text.DecodedRange(begin);
    return decoding;
}

void SettingsScanner::AddAttribute(SettingsEntry& ioEntry, const Key& iKey)
{
    if (!iKey.name) {
        Refuse(iKey.begin, kLoneNul);
        return;
    }
    ioEntry.name = *iKey.name;
    const std::string_view name = _Text.Name(ioEntry);
    if (name.size() > SettingsText::kLongestName)
        Refuse(iKey.begin, "a name of " + std::to_string(name.size()) + " bytes is longer than " +
                               std::to_string(SettingsText::kLongestName));
    if (!_Text.Add(ioEntry)) {
        _Sure = false;
        Refuse(iKey.begin, "the name is there already");
    }
}

void SettingsScanner::AddTable(const Key& iKey)
{
    if (iKey.name)
        _Text.Add({*iKey.name, Offset(iKey.begin), {}, 0, 0, Kind::Table});
    else
        Refuse(iKey.begin, kLoneNul);
}

void SettingsScanner::CountKeyPart()
{
    if (++_KeyParts > kMostKeyParts || ++_KeyPartsOfStatement > kMostKeyPartsOfStatement)
        RaiseDamage(_File, PositionOf(_Text.Bytes(), Offset(_At)),
                    "there are more dotted names than a settings file may have");
}

void SettingsScanner::Refuse(const char* iPlace, std::string iReason)
{
    if (!_Refusal)
        _Refusal = Refusal{Offset(iPlace), std::move(iReason)};
}

bool SettingsScanner::StartsWith(std::string_view iText) const
{
    return std::string_view(_At, static_cast<std::size_t>(_End - _At)).starts_with(iText);
}
