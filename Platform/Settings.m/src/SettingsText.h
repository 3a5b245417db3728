#pragma once

#include "NameIndex.h"
#include "TomlString.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A stretch of the text of a settings file, or of what was decoded from it.
struct TextRange {
    std::uint32_t begin;
    std::uint32_t end;
};

// One string, number, truth value or date, as it stands in the file and as the text it means.
struct SettingsItem {
    TextRange source; // delimiters included
    TextRange text;
    Quoting quoting;
};

// A name at the top of the file.
struct SettingsEntry {
    enum class Kind : std::uint8_t {
        Value, // NAME = "value"
        List,  // NAME = ["first", "second"]
        Table, // [NAME], NAME.KEY = …, NAME = { … } and lists of tables or of lists: no attribute
    };

    TextRange name;
    std::uint32_t key; // where the statement begins
    TextRange source;  // its value; empty for a table
    std::uint32_t firstItem;
    std::uint32_t itemCount; // 1 for a Value, 0 for a Table
    Kind kind;

    bool IsAttribute() const { return kind != Kind::Table; }
};

// The text of a settings file, read and understood: never changed once it is made, and shared by
// whoever uses that state of the file, in any thread.
//
// Everything is kept as offsets into the text; only strings with escapes are decoded to a place of
// their own. A look-up costs one hash of the name.
class SettingsText
{
public:
    static constexpr std::size_t kLargestFile = 64u << 20;
    static constexpr std::size_t kLongestName = 199;

    // Understands the text of the file `iFile`; raises an error with line and column when it is
    // damaged. Files as programs write them and people mostly keep them are read some 20 times as
    // fast as the TOML library does, which is asked about all others, and when there is damage to
    // tell. Of a text that is known already (null: none), only what changed is looked at.
    static std::shared_ptr<const SettingsText> Read(const std::string& iFile, std::string iBytes,
                                                    const SettingsText* iKnown);
    // The text of a file that is not there.
    static const std::shared_ptr<const SettingsText>& Nothing();

    explicit SettingsText(std::string iBytes) : _Bytes(std::move(iBytes)) {}

    std::string_view Bytes() const { return _Bytes; }
    // Where the text begins: behind a byte order mark.
    std::size_t BeginOfText() const { return Bytes().starts_with("\xEF\xBB\xBF") ? 3 : 0; }
    std::string_view Source(TextRange iRange) const
    {
        return Bytes().substr(iRange.begin, iRange.end - iRange.begin);
    }
    // What the name or the text of an item means.
    std::string_view Meaning(TextRange iRange) const
    {
        const bool decoded = iRange.begin >= _Bytes.size();
        const std::string_view from = decoded ? _Decoded : _Bytes;
        const std::size_t begin = decoded ? iRange.begin - _Bytes.size() : iRange.begin;
        return from.substr(begin, iRange.end - iRange.begin);
    }

    // The bounds of the line that a place is on, its line break included.
    std::size_t LineBegin(std::size_t iPlace) const;
    std::size_t LineEnd(std::size_t iPlace) const;

    // Attributes and tables in the order of the file.
    const std::vector<SettingsEntry>& Entries() const { return _Entries; }
    // The entry of that name, or null.
    const SettingsEntry* Find(std::string_view iName) const
    {
        const std::uint32_t number = NumberOf(iName);
        return number == NameIndex::kNone ? nullptr : &_Entries[number];
    }

    std::string_view Name(const SettingsEntry& iEntry) const { return Meaning(iEntry.name); }
    // The strings that an attribute holds, the name of a plain one included.
    std::size_t Count(const SettingsEntry& iEntry) const
    {
        return iEntry.kind == SettingsEntry::Kind::Value ? 2 : iEntry.itemCount;
    }
    std::string_view Get(const SettingsEntry& iEntry, std::size_t iIndex) const
    {
        if (iEntry.kind == SettingsEntry::Kind::Value)
            return iIndex == 0 ? Name(iEntry) : Meaning(Item(iEntry, 0).text);
        return Meaning(Item(iEntry, iIndex).text);
    }
    const SettingsItem& Item(const SettingsEntry& iEntry, std::size_t iIndex) const
    {
        return _Items[iEntry.firstItem + iIndex];
    }

private:
    friend class SettingsScanner;

    struct Overlap;

    // The steps of Read.
    void Understand(const std::string& iFile);
    bool TakeOver(const std::string& iFile, const SettingsText& iKnown);
    void TakeOverHead(const SettingsText& iKnown, const Overlap& iOverlap);
    void TakeOverTail(const SettingsText& iKnown, const Overlap& iOverlap);
    bool TakeOverIndex(const SettingsText& iKnown, const Overlap& iOverlap);

    std::uint32_t NumberOf(std::string_view iName) const
    {
        return _Index->Find(iName,
                            [&](std::uint32_t each) { return Name(_Entries[each]) == iName; });
    }
    // Adds the entry unless its name is there; tells whether it did.
    bool Add(const SettingsEntry& iEntry);
    // What was decoded since _Decoded had `iBegin` bytes.
    TextRange DecodedRange(std::size_t iBegin) const
    {
        return {static_cast<std::uint32_t>(_Bytes.size() + iBegin),
                static_cast<std::uint32_t>(_Bytes.size() + _Decoded.size())};
    }

    std::string _Bytes;
    std::string _Decoded; // its ranges count on from the end of _Bytes
    std::vector<SettingsEntry> _Entries;
    std::vector<SettingsItem> _Items; // in the order of their entries
    // Of _Entries; that of a known text, which does not change any more, when the names are the
    // same.
    std::shared_ptr<NameIndex> _Index = std::make_shared<NameIndex>();
    bool _Sure = false; // understood without the TOML library
};
