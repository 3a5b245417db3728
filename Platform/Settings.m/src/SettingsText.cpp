#include "SettingsText.h"

#include "SettingsFailure.h"
#include "SettingsScanner.h"
#include "TomlBytes.h"
#include "TomlCheck.h"

#include <algorithm>

namespace
{

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
    const std::size_t place = iScanner.Place();
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

// Texts are compared in large blocks first, as memcmp does that fastest, then in small ones.
constexpr std::size_t kBlocks[] = {4096, 256, 16, 1};

std::size_t CommonPrefix(std::string_view iLeft, std::string_view iRight)
{
    const std::size_t limit = std::min(iLeft.size(), iRight.size());
    std::size_t size = 0;
    for (const std::size_t block : kBlocks)
        while (limit - size >= block && iLeft.substr(size, block) == iRight.substr(size, block))
            size += block;
    return size;
}

std::size_t CommonSuffix(std::string_view iLeft, std::string_view iRight)
{
    const std::size_t limit = std::min(iLeft.size(), iRight.size());
    std::size_t size = 0;
    for (const std::size_t block : kBlocks) {
        const auto next = [&](std::string_view iText) {
            return iText.substr(iText.size() - size - block, block);
        };
        while (limit - size >= block && next(iLeft) == next(iRight))
            size += block;
    }
    return size;
}

void Shift(TextRange& ioRange, std::uint32_t iShift)
{
    ioRange.begin += iShift;
    ioRange.end += iShift;
}

} // namespace

std::shared_ptr<const SettingsText> SettingsText::Read(const std::string& iFile, std::string iBytes,
                                                       const SettingsText* iKnown)
{
    if (iBytes.size() > kLargestFile)
        RaiseFailure(iFile, "it is larger than 64 MiB");
    auto text = std::make_shared<SettingsText>(std::move(iBytes));
    if (iKnown && text->TakeOver(iFile, *iKnown))
        return text;
    text = std::make_shared<SettingsText>(std::move(text->_Bytes));
    text->Understand(iFile);
    return text;
}

const std::shared_ptr<const SettingsText>& SettingsText::Nothing()
{
    static const auto* const nothing =
        new std::shared_ptr<const SettingsText>(std::make_shared<SettingsText>(std::string()));
    return *nothing;
}

std::size_t SettingsText::LineBegin(std::size_t iPlace) const
{
    if (iPlace == 0)
        return 0;
    const std::size_t lineBreak = _Bytes.rfind('\n', iPlace - 1);
    return lineBreak == std::string::npos ? BeginOfText() : lineBreak + 1;
}

std::size_t SettingsText::LineEnd(std::size_t iPlace) const
{
    const std::size_t lineBreak = _Bytes.find('\n', iPlace);
    return lineBreak == std::string::npos ? _Bytes.size() : lineBreak + 1;
}

void SettingsText::Understand(const std::string& iFile)
{
    constexpr std::size_t kShortLine = 24;
    _Entries.reserve(_Bytes.size() / kShortLine + 1);
    _Items.reserve(_Bytes.size() / kShortLine + 1);
    const TomlBytes bytes = TomlBytes::Look(_Bytes);
    if (bytes.illFormed != std::string_view::npos)
        RaiseDamage(iFile, PositionOf(_Bytes, bytes.illFormed), "a byte here is not UTF-8 text");
    const SettingsScanner scanner(iFile, *this, BeginOfText(), _Bytes.size());
    _Sure = bytes.sound && scanner.IsSure();
    if (!_Sure)
        AskLibrary(iFile, *this, scanner);
    if (const auto& refusal = scanner.FirstRefusal())
        RaiseDamage(iFile, PositionOf(_Bytes, refusal->place), refusal->reason);
}

// What a text has in common with a known one: whole statements from the beginning to `from` and,
// in the known text, from `stop` to the end. A statement of a text without tables does not depend
// on those before, so that between the two, and nowhere else, it has to be understood.
struct SettingsText::Overlap {
    std::size_t head; // the entries before `from`
    std::size_t from;
    std::size_t tail; // the first entry from `stop` on
    std::size_t stop;
    std::uint32_t shift; // from known places to new ones, modulo 2^32

    Overlap(const SettingsText& iKnown, std::string_view iNew)
    {
        const std::string_view known = iKnown.Bytes();
        const std::size_t prefix = CommonPrefix(known, iNew);
        const std::size_t suffix = CommonSuffix(known.substr(prefix), iNew.substr(prefix));
        const std::vector<SettingsEntry>& entries = iKnown._Entries;
        const auto countBefore = [&](auto iIsBefore) {
            return static_cast<std::size_t>(
                std::partition_point(entries.begin(), entries.end(), iIsBefore) - entries.begin());
        };
        head = countBefore([&](const SettingsEntry& each) { return each.source.end < prefix; });
        const std::size_t end = head > 0 ? iKnown.LineEnd(entries[head - 1].source.end) : 0;
        if (head > 0 && (end > prefix || known[end - 1] != '\n'))
            --head;
        from = head > 0 ? iKnown.LineEnd(entries[head - 1].source.end) : iKnown.BeginOfText();
        const std::size_t same = std::max(known.size() - suffix, from);
        tail = countBefore(
            [&](const SettingsEntry& each) { return iKnown.LineBegin(each.key) < same; });
        stop = tail < entries.size() ? iKnown.LineBegin(entries[tail].key) : known.size();
        shift = static_cast<std::uint32_t>(iNew.size()) - static_cast<std::uint32_t>(known.size());
    }
};

bool SettingsText::TakeOver(const std::string& iFile, const SettingsText& iKnown)
{
    // What was decoded of texts before is carried along, until it is more than this one can need.
    const bool cluttered = iKnown._Decoded.size() > _Bytes.size();
    if (!iKnown._Sure || cluttered || BeginOfText() != iKnown.BeginOfText())
        return false;
    const Overlap overlap(iKnown, _Bytes);
    const std::size_t stop = overlap.stop + _Bytes.size() - iKnown._Bytes.size();
    if (!TomlBytes::Look(Bytes().substr(overlap.from, stop - overlap.from)).sound)
        return false;
    TakeOverHead(iKnown, overlap);
    const SettingsScanner scanner(iFile, *this, overlap.from, stop);
    if (!scanner.IsSure() || scanner.FirstRefusal())
        return false;
    TakeOverTail(iKnown, overlap);
    _Sure = TakeOverIndex(iKnown, overlap);
    return _Sure;
}

void SettingsText::TakeOverHead(const SettingsText& iKnown, const Overlap& iOverlap)
{
    const std::vector<SettingsEntry>& known = iKnown._Entries;
    const auto bytes = static_cast<std::uint32_t>(iKnown._Bytes.size());
    const std::size_t items =
        iOverlap.head < known.size() ? known[iOverlap.head].firstItem : iKnown._Items.size();
    _Decoded = iKnown._Decoded;
    _Entries.reserve(known.size() + 1);
    _Entries.assign(known.begin(), known.begin() + static_cast<std::ptrdiff_t>(iOverlap.head));
    _Items.reserve(iKnown._Items.size() + 1);
    _Items.assign(iKnown._Items.begin(),
                  iKnown._Items.begin() + static_cast<std::ptrdiff_t>(items));
    if (_Decoded.empty())
        return;
    // What was decoded counts on from the end of the text.
    for (SettingsEntry& each : _Entries)
        if (each.name.begin >= bytes)
            Shift(each.name, iOverlap.shift);
    for (SettingsItem& each : _Items)
        if (each.text.begin >= bytes)
            Shift(each.text, iOverlap.shift);
}

void SettingsText::TakeOverTail(const SettingsText& iKnown, const Overlap& iOverlap)
{
    if (iOverlap.tail == iKnown._Entries.size())
        return;
    const std::uint32_t firstItem = iKnown._Entries[iOverlap.tail].firstItem;
    const auto moreItems = static_cast<std::uint32_t>(_Items.size()) - firstItem;
    const auto entry = _Entries.insert(
        _Entries.end(), iKnown._Entries.begin() + static_cast<std::ptrdiff_t>(iOverlap.tail),
        iKnown._Entries.end());
    const auto item =
        _Items.insert(_Items.end(), iKnown._Items.begin() + static_cast<std::ptrdiff_t>(firstItem),
                      iKnown._Items.end());
    if (iOverlap.shift == 0 && moreItems == 0)
        return;
    std::for_each(entry, _Entries.end(), [&](SettingsEntry& each) {
        Shift(each.name, iOverlap.shift);
        each.key += iOverlap.shift;
        Shift(each.source, iOverlap.shift);
        each.firstItem += moreItems;
    });
    std::for_each(item, _Items.end(), [&](SettingsItem& each) {
        Shift(each.source, iOverlap.shift);
        Shift(each.text, iOverlap.shift);
    });
}

// False when a name that is new is in the head or the tail as well.
bool SettingsText::TakeOverIndex(const SettingsText& iKnown, const Overlap& iOverlap)
{
    const auto middleEnd =
        static_cast<std::uint32_t>(_Entries.size() - (iKnown._Entries.size() - iOverlap.tail));
    const auto more = middleEnd - static_cast<std::uint32_t>(iOverlap.tail);
    bool sameNames = more == 0;
    for (std::size_t i = iOverlap.head; i < iOverlap.tail && sameNames; ++i)
        sameNames = Name(_Entries[i]) == iKnown.Name(iKnown._Entries[i]);
    if (sameNames) {
        _Index = iKnown._Index;
        return true;
    }
    const auto renumber = [&](std::uint32_t each) {
        return each < iOverlap.head ? each : each < iOverlap.tail ? NameIndex::kNone : each + more;
    };
    _Index = std::make_shared<NameIndex>(iKnown._Index->Renumbered(renumber));
    for (auto i = static_cast<std::uint32_t>(iOverlap.head); i < middleEnd; ++i) {
        if (NumberOf(Name(_Entries[i])) != NameIndex::kNone)
            return false;
        _Index->Add(Name(_Entries[i]), i);
    }
    return true;
}

bool SettingsText::Add(const SettingsEntry& iEntry)
{
    const std::string_view name = Name(iEntry);
    if (NumberOf(name) != NameIndex::kNone)
        return false;
    _Index->Add(name, static_cast<std::uint32_t>(_Entries.size()));
    _Entries.push_back(iEntry);
    return true;
}
