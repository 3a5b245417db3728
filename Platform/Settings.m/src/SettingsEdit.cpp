#include "SettingsEdit.h"

#include "SettingsFailure.h"
#include "TomlString.h"

#include <algorithm>

namespace
{

using Items = std::vector<std::string>;

// A stretch of the old text and what takes its place.
struct Edit {
    std::size_t begin;
    std::size_t end;
    std::string replacement;
};

bool IsPlain(std::string_view iName, const Items& iItems)
{
    return iItems.size() == 2 && iItems[0] == iName;
}

std::string QuoteItems(std::string_view iName, const Items& iItems)
{
    if (IsPlain(iName, iItems))
        return QuoteBasic(iItems[1]);
    std::string list = "[";
    for (const std::string& each : iItems)
        (list += list.size() > 1 ? ", " : "") += QuoteBasic(each);
    return list += ']';
}

class Editor
{
public:
    Editor(const std::string& iFile, const SettingsText& iText)
        : _File(iFile), _Text(iText), _Bytes(iText.Bytes())
    {
    }

    void Change(const SettingsChange& iChange)
    {
        const SettingsEntry* const entry = _Text.Find(iChange.name);
        if (iChange.items && !entry)
            _New.push_back(&iChange);
        else if (iChange.items && !entry->IsAttribute())
            RaiseDamage(_File, PositionOf(_Bytes, entry->key), "the name belongs to a table");
        else if (iChange.items)
            Rewrite(*entry, *iChange.items);
        else if (entry && entry->IsAttribute())
            _Edits.push_back({_Text.LineBegin(entry->key), _Text.LineEnd(entry->source.end), {}});
    }

    std::string Result()
    {
        const std::size_t place = _New.empty() ? _Bytes.size() : PlaceOfNew();
        _Edits.push_back({_Bytes.size(), _Bytes.size(), {}});
        std::sort(_Edits.begin(), _Edits.end(),
                  [](const Edit& left, const Edit& right) { return left.begin < right.begin; });
        std::string result;
        std::size_t done = 0;
        for (const Edit& each : _Edits) {
            if (!_New.empty() && place <= each.begin) {
                result.append(_Bytes, done, place - done);
                done = place;
                AppendNew(result);
            }
            result.append(_Bytes, done, each.begin - done);
            result += each.replacement;
            done = each.end;
        }
        return result;
    }

private:
    void Rewrite(const SettingsEntry& iEntry, const Items& iItems)
    {
        if (HasItems(iEntry, iItems))
            return;
        const bool list = iEntry.kind == SettingsEntry::Kind::List;
        const bool plain = IsPlain(_Text.Name(iEntry), iItems);
        if (!list && plain)
            Replace(_Text.Item(iEntry, 0), iItems[1]);
        else if (list && !plain && iItems.size() == iEntry.itemCount)
            RewriteChanged(iEntry, iItems);
        else
            _Edits.push_back(
                {iEntry.source.begin, iEntry.source.end, QuoteItems(_Text.Name(iEntry), iItems)});
    }

    void RewriteChanged(const SettingsEntry& iEntry, const Items& iItems)
    {
        for (std::size_t i = 0; i < iItems.size(); ++i)
            if (_Text.Get(iEntry, i) != iItems[i])
                Replace(_Text.Item(iEntry, i), iItems[i]);
    }

    bool HasItems(const SettingsEntry& iEntry, const Items& iItems) const
    {
        if (iItems.size() != _Text.Count(iEntry))
            return false;
        for (std::size_t i = 0; i < iItems.size(); ++i)
            if (_Text.Get(iEntry, i) != iItems[i])
                return false;
        return true;
    }

    void Replace(const SettingsItem& iItem, std::string_view iNew)
    {
        _Edits.push_back({iItem.source.begin, iItem.source.end,
                          QuoteLike(_Text.Source(iItem.source), iItem.quoting, LineBreak(), iNew)});
    }

    // Behind the last attribute; without any, above the first table and its comment; without
    // either, at the end.
    std::size_t PlaceOfNew() const
    {
        const std::vector<SettingsEntry>& entries = _Text.Entries();
        const auto last =
            std::find_if(entries.rbegin(), entries.rend(),
                         [](const SettingsEntry& each) { return each.IsAttribute(); });
        if (last != entries.rend())
            return _Text.LineEnd(last->source.end);
        return entries.empty() ? _Bytes.size() : AboveComment(_Text.LineBegin(entries.front().key));
    }

    std::size_t AboveComment(std::size_t iLine) const
    {
        while (iLine > _Text.BeginOfText()) {
            const std::size_t before = _Text.LineBegin(iLine - 1);
            const std::size_t first = _Bytes.find_first_not_of(" \t", before);
            if (_Bytes[first] != '#')
                break;
            iLine = before;
        }
        return iLine;
    }

    void AppendNew(std::string& ioResult)
    {
        const std::string_view before =
            std::string_view(ioResult).substr(std::min(ioResult.size(), _Text.BeginOfText()));
        const std::string_view known = before.ends_with("\r\n") ? "\r\n"
                                       : before.ends_with('\n') ? "\n"
                                                                : "";
        const std::string lineBreak(known.empty() ? LineBreak() : known);
        if (known.empty() && !before.empty())
            ioResult += lineBreak;
        for (const SettingsChange* const each : _New)
            ioResult +=
                QuoteKey(each->name) + " = " + QuoteItems(each->name, *each->items) + lineBreak;
        _New.clear();
    }

    // That of the file.
    std::string_view LineBreak() const
    {
        const std::string_view first = FirstLineBreak(_Bytes);
        return first.empty() ? "\n" : first;
    }

    const std::string& _File;
    const SettingsText& _Text;
    const std::string_view _Bytes;
    std::vector<Edit> _Edits;
    std::vector<const SettingsChange*> _New;
};

} // namespace

std::string EditSettings(const std::string& iFile, const SettingsText& iText,
                         const SettingsChanges& iChanges)
{
    Editor editor(iFile, iText);
    for (const SettingsChange& each : iChanges.All())
        editor.Change(each);
    return editor.Result();
}
