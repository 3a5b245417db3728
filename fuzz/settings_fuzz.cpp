// The text of a settings file, read and edited. An input is up to four changes of attributes, a
// splice, and the text; whatever it is, it is understood or refused with line and column, and what
// is understood can be changed without another byte being touched.
#include "FuzzInput.h"
#include "SettingsEdit.h"
#include "SettingsText.h"
#include "TomlCheck.h"
#include "ZORRaisedError.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace
{

using Text = std::shared_ptr<const SettingsText>;
using Strings = std::vector<std::string>;

const std::string kFile = "fuzzed";

// "settings file fuzzed: line 3, column 5: …", both within the text.
void RequirePlace(const std::string& iMessage, std::string_view iBytes)
{
    std::size_t line = 0;
    std::size_t column = 0;
    const std::size_t begin = iMessage.find("settings file fuzzed: ");
    Require(begin != std::string::npos);
    Require(std::sscanf(iMessage.c_str() + begin,
                        "settings file fuzzed: line %zu, column %zu: ", &line, &column) == 2);
    Require(line >= 1 && column >= 1);
    for (; line > 1; --line) {
        const std::size_t end = iBytes.find('\n');
        Require(end != std::string_view::npos);
        iBytes.remove_prefix(end + 1);
    }
    Require(column <= std::min(iBytes.find('\n'), iBytes.size()) + 1);
}

// What is raised, or empty.
template <class Act>
std::string Refusal(std::string_view iBytes, Act iAct)
{
    try {
        iAct();
        return {};
    } catch (const ZORRaisedError& raised) {
        RequirePlace(raised.what(), iBytes);
        return raised.what();
    }
}

Strings ItemsOf(const SettingsText& iText, const SettingsEntry& iEntry)
{
    Strings items;
    for (std::size_t i = 0; iEntry.IsAttribute() && i < iText.Count(iEntry); ++i)
        items.emplace_back(iText.Get(iEntry, i));
    return items;
}

// All that a text was understood as, places included.
std::string Everything(const SettingsText& iText)
{
    std::string told;
    for (const SettingsEntry& each : iText.Entries()) {
        told += std::string(iText.Name(each)) + " at " + std::to_string(each.key) + " kind " +
                std::to_string(static_cast<int>(each.kind)) + ": " +
                std::string(iText.Source(each.source));
        for (const std::string& item : ItemsOf(iText, each))
            told += " | " + item;
        for (std::size_t i = 0; i < each.itemCount; ++i)
            told += " | " + std::string(iText.Source(iText.Item(each, i).source));
        told += '\n';
        Require(iText.Find(iText.Name(each)) == &each);
    }
    return told;
}

Text Read(std::string_view iBytes, const SettingsText* iKnown, std::string& oRefusal)
{
    Text text;
    oRefusal =
        Refusal(iBytes, [&] { text = SettingsText::Read(kFile, std::string(iBytes), iKnown); });
    return text;
}

// With and without what was known before; null when it is refused.
Text ReadBothWays(std::string_view iBytes, const SettingsText& iKnown)
{
    std::string refusal;
    const Text fresh = Read(iBytes, nullptr, refusal);
    std::string refusalAgain;
    const Text again = Read(iBytes, &iKnown, refusalAgain);
    RequireEqual(refusalAgain, refusal);
    if (!fresh)
        return nullptr;
    Require(again->Bytes() == iBytes && fresh->Bytes() == iBytes);
    RequireEqual(Everything(*again), Everything(*fresh));
    std::vector<TomlName> names;
    Require(!CheckToml(iBytes, names));
    return again;
}

// The bytes in which both differ were those from `iBegin` to `iEnd` of the old text.
void RequireOnlyBetween(std::string_view iOld, std::string_view iNew, std::size_t iBegin,
                        std::size_t iEnd)
{
    const std::string_view head = iOld.substr(0, iBegin);
    const std::string_view tail = iOld.substr(iEnd);
    Require(iNew.size() >= head.size() + tail.size());
    Require(iNew.starts_with(head) && iNew.ends_with(tail));
}

void RequireInserted(std::string_view iOld, std::string_view iNew)
{
    Require(iNew.size() > iOld.size());
    const auto begin = static_cast<std::size_t>(
        std::mismatch(iOld.begin(), iOld.end(), iNew.begin()).first - iOld.begin());
    Require(iNew.ends_with(iOld.substr(begin)));
}

void RequireOthersAsBefore(const SettingsText& iOld, const SettingsText& iNew,
                           std::string_view iName)
{
    const auto others = [&](const SettingsText& iText) {
        std::string told;
        for (const SettingsEntry& each : iText.Entries()) {
            if (iText.Name(each) == iName)
                continue;
            told += std::string(iText.Name(each)) + (each.IsAttribute() ? ":" : " no attribute");
            for (const std::string& item : ItemsOf(iText, each))
                told += " | " + item;
            told += '\n';
        }
        return told;
    };
    RequireEqual(others(iNew), others(iOld));
}

// The text with the attribute changed, or the same one when it may not be.
Text Change(const Text& iOld, const std::string& iName, const std::optional<Strings>& iItems)
{
    SettingsChanges changes;
    if (iItems)
        changes.Write(iName, *iItems);
    else
        changes.Remove(iName);
    const SettingsEntry* const before = iOld->Find(iName);
    const bool table = before && !before->IsAttribute();
    std::string edited;
    const std::string refusal =
        Refusal(iOld->Bytes(), [&] { edited = EditSettings(kFile, *iOld, changes); });
    Require(refusal.empty() == !(table && iItems));
    if (!refusal.empty())
        return iOld;

    if (before && iItems)
        RequireOnlyBetween(iOld->Bytes(), edited, before->source.begin, before->source.end);
    else if (before && !table)
        RequireOnlyBetween(iOld->Bytes(), edited, iOld->LineBegin(before->key),
                           iOld->LineEnd(before->source.end));
    else if (iItems)
        RequireInserted(iOld->Bytes(), edited);
    else
        Require(edited == iOld->Bytes());

    const Text text = ReadBothWays(edited, *iOld);
    Require(text != nullptr);
    RequireOthersAsBefore(*iOld, *text, iName);
    const SettingsEntry* const after = text->Find(iName);
    if (iItems)
        Require(after && after->IsAttribute() && ItemsOf(*text, *after) == *iItems);
    else
        Require(table == (after != nullptr));
    return text;
}

struct Wish {
    std::string name;
    std::optional<Strings> items;
};

std::vector<Wish> Wishes(FuzzInput& ioInput)
{
    std::vector<Wish> wishes(ioInput.Byte() % 5);
    for (Wish& each : wishes) {
        const unsigned kind = ioInput.Byte();
        each.name = ioInput.Text();
        if (kind % 4 == 0)
            continue;
        each.items.emplace();
        if (kind % 4 == 1)
            each.items->assign({each.name, ioInput.Text()});
        else
            for (unsigned i = 0; i < kind / 4 % 5; ++i)
                each.items->push_back(ioInput.Text());
    }
    return wishes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    FuzzInput input(iBytes, iSize);
    const std::vector<Wish> wishes = Wishes(input);
    const std::size_t begin = input.Number();
    const std::size_t size = input.Byte();
    const std::string inserted = input.Text();
    const std::string_view bytes = input.Rest();

    Text text = ReadBothWays(bytes, *SettingsText::Nothing());
    if (!text)
        return 0;
    std::string spliced(bytes);
    if (begin <= spliced.size())
        ReadBothWays(spliced.replace(begin, size, inserted), *text);
    for (const auto& [name, items] : wishes)
        if (name.size() <= SettingsText::kLongestName)
            text = Change(text, name, items);
    return 0;
}
