#include "SettingsText.h"

#include "SettingsFailure.h"
#include "SettingsScanner.h"
#include "TomlCheck.h"
#include "Utf8Characters.h"

#include <algorithm>
#include <functional>

namespace
{

std::uint32_t HashOf(std::string_view iName)
{
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(iName));
}

// What sort of bytes occur in a text.
struct ByteKinds {
    bool control; // other than tab, line feed and carriage return
    bool carriageReturn;
    bool high; // above 127
};

ByteKinds LookAtBytes(std::string_view iText)
{
    unsigned control = 0, carriageReturn = 0, high = 0;
    const auto look = [&](char iByte) {
        const unsigned byte = static_cast<unsigned char>(iByte);
        const unsigned space = unsigned(byte == '\t') | unsigned(byte == '\n');
        carriageReturn |= unsigned(byte == '\r');
        control |=
            (unsigned(byte < 0x20) & ~space & ~unsigned(byte == '\r')) | unsigned(byte == 0x7F);
        high |= byte;
    };
    // Blocks of a fixed size let compilers make vector code of the loop.
    constexpr std::size_t kBlock = 64;
    std::size_t at = 0;
    for (; at + kBlock <= iText.size(); at += kBlock)
        for (std::size_t i = 0; i < kBlock; ++i)
            look(iText[at + i]);
    for (; at < iText.size(); ++at)
        look(iText[at]);
    return {control != 0, carriageReturn != 0, high > 0x7F};
}

// The first byte that is part of no UTF-8 character, or npos.
std::size_t FindIllFormed(std::string_view iText)
{
    for (std::size_t at = 0; at < iText.size();) {
        const std::size_t length = Utf8FirstLength(iText.substr(at));
        if (length == 1 && static_cast<unsigned char>(iText[at]) >= 0x80)
            return at;
        at += length;
    }
    return std::string_view::npos;
}

bool HasLoneCarriageReturn(std::string_view iText)
{
    for (std::size_t at = iText.find('\r'); at != std::string_view::npos;
         at = iText.find('\r', at + 1))
        if (at + 1 == iText.size() || iText[at + 1] != '\n')
            return true;
    return false;
}

// Whether all the bytes may stand in TOML; raises an error when they are not UTF-8.
bool CheckBytes(const std::string& iFile, std::string_view iText)
{
    const ByteKinds kinds = LookAtBytes(iText);
    const std::size_t illFormed = kinds.high ? FindIllFormed(iText) : std::string_view::npos;
    if (illFormed != std::string_view::npos)
        RaiseDamage(iFile, PositionOf(iText, illFormed), "a byte here is not UTF-8 text");
    return !kinds.control && !(kinds.carriageReturn && HasLoneCarriageReturn(iText));
}

// Whether the library found the same names at the top of the file. One with a NUL in it, which no
// text has, may stand for another here or for nothing.
bool HasSameNames(const SettingsText& iText, const std::vector<TomlName>& iNames)
{
    const auto agrees = [&](const TomlName& each) {
        const SettingsEntry* const entry = iText.Find(each.name);
        return each.name.find('\0') != std::string::npos ||
               (entry && entry->IsAttribute() == !each.table);
    };
    return iText.Entries().size() <= iNames.size() &&
           std::all_of(iNames.begin(), iNames.end(), agrees);
}

void AskLibrary(const std::string& iFile, const SettingsText& iText,
                const SettingsScanner& iScanner)
{
    const auto place = static_cast<std::size_t>(iScanner.Place() - iText.Bytes().data());
    const std::string_view rest = iText.Bytes().substr(place);
    // The library needs stack for dotted names, and nobody counted those that are left.
    constexpr std::ptrdiff_t kHarmless = 1000;
    std::vector<TomlName> names;
    if (std::count(rest.begin(), rest.end(), '.') <= kHarmless)
        if (const std::optional<TomlDamage> damage = CheckToml(iText.Bytes(), names))
            RaiseDamage(iFile, damage->where, damage->what);
    if (!iScanner.IsComplete())
        RaiseDamage(iFile, PositionOf(iText.Bytes(), place), "this is not a setting");
    if (!iScanner.FirstRefusal() && !HasSameNames(iText, names))
        RaiseFailure(iFile, "it cannot be understood");
}

} // namespace

std::shared_ptr<const SettingsText> SettingsText::Read(const std::string& iFile, std::string iBytes)
{
    if (iBytes.size() > kLargestFile)
        RaiseFailure(iFile, "it is larger than 64 MiB");
    const auto text = std::make_shared<SettingsText>(std::move(iBytes));
    const bool sureBytes = CheckBytes(iFile, text->Bytes());
    const SettingsScanner scanner(iFile, *text);
    if (!sureBytes || !scanner.IsSure())
        AskLibrary(iFile, *text, scanner);
    if (const auto& refusal = scanner.FirstRefusal()) {
        const auto place = static_cast<std::size_t>(refusal->place - text->Bytes().data());
        RaiseDamage(iFile, PositionOf(text->Bytes(), place), refusal->reason);
    }
    return text;
}

const std::shared_ptr<const SettingsText>& SettingsText::Nothing()
{
    static const auto* const nothing =
        new std::shared_ptr<const SettingsText>(std::make_shared<SettingsText>(std::string()));
    return *nothing;
}

const SettingsEntry* SettingsText::Find(std::string_view iName) const
{
    if (_Slots.empty())
        return nullptr;
    const std::uint32_t entry = SlotOf(iName, HashOf(iName)).entry;
    return entry == 0 ? nullptr : &_Entries[entry - 1];
}

bool SettingsText::Add(const SettingsEntry& iEntry)
{
    if (2 * (_Entries.size() + 1) > _Slots.size())
        Grow();
    const std::uint32_t hash = HashOf(Name(iEntry));
    const Slot& slot = SlotOf(Name(iEntry), hash);
    if (slot.entry != 0)
        return false;
    _Entries.push_back(iEntry);
    _Slots[static_cast<std::size_t>(&slot - _Slots.data())] = {
        hash, static_cast<std::uint32_t>(_Entries.size())};
    return true;
}

const SettingsText::Slot& SettingsText::SlotOf(std::string_view iName, std::uint32_t iHash) const
{
    const std::size_t mask = _Slots.size() - 1;
    for (std::size_t at = iHash & mask;; at = (at + 1) & mask) {
        const Slot& slot = _Slots[at];
        if (slot.entry == 0 || (slot.hash == iHash && Name(_Entries[slot.entry - 1]) == iName))
            return slot;
    }
}

void SettingsText::Grow()
{
    const std::vector<Slot> before = std::move(_Slots);
    _Slots.assign(before.empty() ? 16 : 4 * before.size(), Slot{});
    const std::size_t mask = _Slots.size() - 1;
    for (const Slot& each : before) {
        std::size_t at = each.hash & mask;
        while (each.entry != 0 && _Slots[at].entry != 0)
            at = (at + 1) & mask;
        if (each.entry != 0)
            _Slots[at] = each;
    }
}
