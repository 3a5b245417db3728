#pragma once

#include "SettingsText.h"

#include <optional>
#include <string>
#include <string_view>

// Finds every name, value and table in the text of a settings file, in one pass.
//
// The scanner knows the grammar of TOML, but not each of its rules: it is sure by itself that a
// file of comments, strings, lists of strings, whole numbers and truth values is sound, and finds
// its way through any other sound file, but leaves it to the TOML library to say that it is one.
class SettingsScanner
{
public:
    // The place where an attribute has a name or value that no attribute can have.
    struct Refusal {
        std::size_t place;
        std::string reason;
    };

    // Reads the statements from the place `iFrom`, where a line begins, to `iStop`, and adds what
    // it finds to the text. The bytes are UTF-8. Raises an error when more names are dotted than
    // the TOML library can take.
    SettingsScanner(const std::string& iFile, SettingsText& ioText, std::size_t iFrom,
                    std::size_t iStop);

    // False when it met something that it could not make sense of, at Place(), or a statement
    // reaches beyond the end.
    bool IsComplete() const { return _Complete; }
    // Whether the text is surely sound, provided that its bytes may stand in TOML.
    bool IsSure() const { return _Sure && _Complete; }
    std::size_t Place() const { return Offset(_At); }
    const std::optional<Refusal>& FirstRefusal() const { return _Refusal; }

private:
    struct Key {
        const char* begin;
        std::optional<TextRange> name; // of its first part; nothing when no text can be equal to it
        bool dotted;
    };

    bool ReadStatement();
    bool ReadHeader();
    bool ReadKeyValue();
    bool ReadKey(Key& oKey);
    bool ReadKeyPart(SettingsItem& oPart, bool& oPlain);
    bool ReadValue(SettingsEntry& ioEntry);
    bool ReadList(SettingsEntry& ioEntry);
    bool ReadItem(std::string_view iTerminators);
    bool ReadString(SettingsItem& oItem, bool& oPlain);
    bool ReadScalar(SettingsItem& oItem, std::string_view iTerminators);
    bool SkipTable(SettingsEntry& ioEntry);
    bool SkipNested();
    bool SkipListSpace();
    bool EndLine();
    void SkipComment();
    void SkipBlanks();

    TomlDecoding Decode(SettingsItem& ioItem);
    void AddAttribute(SettingsEntry& ioEntry, const Key& iKey);
    void AddTable(const Key& iKey);
    void CountKeyPart();
    void Refuse(const char* iPlace, std::string iReason);

    bool StartsWith(std::string_view iText) const;
    std::uint32_t Offset(const char* iPlace) const
    {
        return static_cast<std::uint32_t>(iPlace - _Begin);
    }
    TextRange Range(const char* iBegin, const char* iEnd) const
    {
        return {Offset(iBegin), Offset(iEnd)};
    }

    const std::string& _File;
    SettingsText& _Text;
    const char* const _Begin;
    const char* const _End; // a NUL stands there, so that one byte may always be looked at
    const char* _At;
    bool _Sure = true;
    bool _Complete = true;
    bool _InTable = false;
    bool _Keep = true; // the items read now are an attribute's
    std::size_t _KeyParts = 0;
    std::size_t _KeyPartsOfStatement = 0;
    std::optional<Refusal> _Refusal;
};
