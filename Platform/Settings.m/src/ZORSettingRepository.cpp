#include "ZORSettingRepository.h"

#include "SettingsCache.h"
#include "SettingsChanges.h"
#include "SettingsFailure.h"
#include "SettingsPath.h"
#include "SettingsSave.h"
#include "SettingsText.h"
#include "Utf8Characters.h"
#include "ZORString.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>

namespace
{

constexpr std::size_t kBuffer = SettingsText::kLongestName + 1;

// The strings of an attribute, saved or not.
class Attribute
{
public:
    Attribute(const SettingsText& iText, const SettingsChanges& iChanges, std::string_view iName)
        : _Text(iText), _Change(iChanges.Find(iName)), _Entry(_Change ? nullptr : iText.Find(iName))
    {
        if (_Entry && !_Entry->IsAttribute())
            _Entry = nullptr;
    }

    std::size_t Count() const
    {
        if (_Entry)
            return _Text.Count(*_Entry);
        return _Change && _Change->items ? _Change->items->size() : 0;
    }

    std::string_view operator[](std::size_t iIndex) const
    {
        return _Entry ? _Text.Get(*_Entry, iIndex) : std::string_view((*_Change->items)[iIndex]);
    }

private:
    const SettingsText& _Text;
    const SettingsChange* _Change;
    const SettingsEntry* _Entry;
};

// The attributes that are there when it is made.
class Iteration
{
public:
    Iteration(std::shared_ptr<const SettingsText> iText, const SettingsChanges& iChanges)
        : _Text(std::move(iText)), _Changes(iChanges)
    {
    }

    // The name of the next one in oName; false behind the last.
    bool Next(std::string_view& oName)
    {
        while (_Entry < _Text->Entries().size()) {
            const SettingsEntry& entry = _Text->Entries()[_Entry++];
            oName = _Text->Name(entry);
            const SettingsChange* const change = _Changes.Find(oName);
            if (entry.IsAttribute() && (!change || change->items))
                return true;
        }
        while (_Change < _Changes.All().size()) {
            const SettingsChange& change = _Changes.All()[_Change++];
            oName = change.name;
            const SettingsEntry* const entry = _Text->Find(oName);
            if (change.items && !(entry && entry->IsAttribute()))
                return true;
        }
        return false;
    }

    Attribute Get(std::string_view iName) const { return {*_Text, _Changes, iName}; }

private:
    const std::shared_ptr<const SettingsText> _Text;
    const SettingsChanges _Changes;
    std::size_t _Entry = 0;
    std::size_t _Change = 0;
};

// Writes as many whole characters as the caller's buffer takes, and the NUL.
void FillBuffer(char* oBuffer, std::string_view iText)
{
    std::size_t size = std::min(iText.size(), kBuffer - 1);
    while (!Utf8IsBoundary(iText, size))
        --size;
    iText.copy(oBuffer, size);
    oBuffer[size] = '\0';
}

// Tells of a lack of memory as of any other failure.
template <class Step>
auto WithMemory(const std::string& iFile, const char* iStep, Step iDo)
{
    try {
        return iDo();
    } catch (const std::bad_alloc&) {
        RaiseSystemFailure(iFile, iStep, ENOMEM);
    }
}

} // namespace

struct ZORSettingRepository::State {
    std::string path; // empty: no directory to keep the file in
    std::shared_ptr<const SettingsText> text;
    SettingsChanges changes;
    std::optional<Iteration> iteration;
};

ZORSettingRepository::ZORSettingRepository(std::unique_ptr<State> iState)
    : _State(std::move(iState))
{
}

ZORSettingRepository::~ZORSettingRepository() = default;

ZORSettingRepository* ZORSettingRepository::GetRepository(const char* iName)
{
    const std::string_view name = iName ? iName : "";
    return WithMemory(std::string(name), "read it", [&] {
        SettingsPlace place = FindSettings(name);
        auto state = std::make_unique<State>();
        state->text =
            place.exists ? CachedSettings(place.path, place.status) : SettingsText::Nothing();
        state->path = std::move(place.path);
        return new ZORSettingRepository(std::move(state));
    });
}

void ZORSettingRepository::ReadSetting(const char* iName, ZORBaseUnknown** ioItems, long iCount)
{
    if (!iName || !ioItems || iCount <= 0)
        return;
    const Attribute attribute(*_State->text, _State->changes, iName);
    const std::size_t count = std::min(static_cast<std::size_t>(iCount), attribute.Count());
    for (std::size_t i = 0; i < count; ++i)
        if (auto* const item = dynamic_cast<ZORString*>(ioItems[i])) {
            const std::string_view text = attribute[i];
            *item = "";
            item->Append(text.data(), text.size());
        }
}

void ZORSettingRepository::WriteSetting(const char* iName, ZORBaseUnknown** iItems, long iCount)
{
    const std::string& file = _State->path;
    const std::string_view name = iName ? iName : "";
    if (!iName)
        RaiseFailure(file, "an attribute needs a name");
    if (name.size() > SettingsText::kLongestName)
        RaiseFailure(file, "the name of an attribute has at most " +
                               std::to_string(SettingsText::kLongestName) + " bytes, not " +
                               std::to_string(name.size()));
    std::vector<std::string> items;
    for (long i = 0; i < iCount; ++i) {
        const auto* const item = iItems ? dynamic_cast<const ZORString*>(iItems[i]) : nullptr;
        if (!item)
            RaiseFailure(file, "item " + std::to_string(i + 1) + " of the attribute " +
                                   std::string(name) + " is not a ZORString");
        items.emplace_back(item->ConvertToChar(), item->GetLength());
    }
    _State->changes.Write(name, std::move(items));
}

void ZORSettingRepository::DelAttribute(const char* iName)
{
    if (iName)
        _State->changes.Remove(iName);
}

void ZORSettingRepository::SaveRepository()
{
    if (_State->changes.IsEmpty())
        return;
    if (_State->path.empty())
        RaiseFailure("(none)", "there is no directory to keep it in: set ZOR_SETTINGS_PATH, "
                               "XDG_CONFIG_HOME or HOME");
    WithMemory(_State->path, "save it", [&] {
        _State->text = SaveSettings(_State->path, _State->text, _State->changes);
        _State->changes = SettingsChanges();
        CacheSavedSettings(_State->path, _State->text);
    });
}

int ZORSettingRepository::NextAttribute(char* oName, char* oText, long* oNumber, short)
{
    std::optional<Iteration>& iteration = _State->iteration;
    if (!iteration)
        iteration.emplace(_State->text, _State->changes);
    std::string_view name;
    if (!iteration->Next(name))
        return -1;
    const Attribute attribute = iteration->Get(name);
    const std::size_t count = attribute.Count();
    if (oName)
        FillBuffer(oName, name);
    if (oText)
        FillBuffer(oText, count == 0 ? std::string_view()
                                     : attribute[std::min<std::size_t>(count, 2) - 1]);
    if (oNumber)
        *oNumber = static_cast<long>(count);
    return 0;
}
