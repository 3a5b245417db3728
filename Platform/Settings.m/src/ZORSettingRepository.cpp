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
#include <memory>
#include <new>
#include <typeinfo>

namespace
{

constexpr std::size_t kBuffer = SettingsText::kLongestName + 1;

// The strings of an attribute, saved or not; of none, when there is no such attribute.
class Attribute
{
public:
    Attribute() = default;
    Attribute(const SettingsText& iText, const SettingsEntry& iEntry)
        : _Text(&iText), _Entry(iEntry.IsAttribute() ? &iEntry : nullptr)
    {
    }
    explicit Attribute(const SettingsChange& iChange)
        : _Items(iChange.items ? &*iChange.items : nullptr)
    {
    }

    bool Exists() const { return _Entry || _Items; }
    std::size_t Count() const
    {
        return _Entry ? _Text->Count(*_Entry) : _Items ? _Items->size() : 0;
    }
    std::string_view operator[](std::size_t iIndex) const
    {
        return _Entry ? _Text->Get(*_Entry, iIndex) : std::string_view((*_Items)[iIndex]);
    }

private:
    const SettingsText* _Text = nullptr;
    const SettingsEntry* _Entry = nullptr;
    const std::vector<std::string>* _Items = nullptr;
};

// The settings as they are read: a text and what was changed since.
struct ChangedSettings {
    std::shared_ptr<const SettingsText> text;
    SettingsChanges changes;

    Attribute Find(std::string_view iName) const
    {
        if (const SettingsChange* const change = changes.Find(iName))
            return Attribute(*change);
        return FindSaved(iName);
    }
    Attribute FindSaved(std::string_view iName) const
    {
        const SettingsEntry* const entry = text->Find(iName);
        return entry ? Attribute(*text, *entry) : Attribute();
    }
};

// The attributes that are there when it is made.
class Iteration
{
public:
    explicit Iteration(const ChangedSettings& iSettings) : _Settings(iSettings) {}

    // The next attribute and its name; none behind the last.
    Attribute Next(std::string_view& oName)
    {
        _Last = Seek(_LastName);
        oName = _LastName;
        return _Last;
    }

    // The attribute that Next gave last, when it has that name and the settings are what they were
    // when the iteration began: most read the attribute they are at, and need no look-up then.
    Attribute Last(std::string_view iName, const ChangedSettings& iNow) const
    {
        const bool same =
            iNow.text == _Settings.text && iNow.changes.IsEmpty() && _Settings.changes.IsEmpty();
        return same && iName == _LastName ? _Last : Attribute();
    }

private:
    Attribute Seek(std::string_view& oName)
    {
        while (_Entry < _Settings.text->Entries().size()) {
            const SettingsEntry& entry = _Settings.text->Entries()[_Entry++];
            oName = _Settings.text->Name(entry);
            const SettingsChange* const change = _Settings.changes.Find(oName);
            const Attribute saved(*_Settings.text, entry);
            const Attribute now = change ? Attribute(*change) : saved;
            if (saved.Exists() && now.Exists())
                return now;
        }
        while (_Change < _Settings.changes.All().size()) {
            const SettingsChange& change = _Settings.changes.All()[_Change++];
            oName = change.name;
            if (change.items && !_Settings.FindSaved(oName).Exists())
                return Attribute(change);
        }
        return {};
    }

    const ChangedSettings _Settings;
    Attribute _Last;
    std::string_view _LastName;
    std::size_t _Entry = 0;
    std::size_t _Change = 0;
};

// The item as a string, or null.
ZORString* AsString(ZORBaseUnknown* iItem)
{
    // Mostly it is just that, and then there is no need to walk up its bases.
    if (iItem && typeid(*iItem) == typeid(ZORString))
        return static_cast<ZORString*>(iItem);
    return dynamic_cast<ZORString*>(iItem);
}

// Writes as many whole characters as the caller's buffer takes, and the NUL.
void FillBuffer(char* oBuffer, std::string_view iText)
{
    std::size_t size = iText.size();
    if (size >= kBuffer)
        for (size = kBuffer - 1; !Utf8IsBoundary(iText, size);)
            --size;
    iText.copy(oBuffer, size);
    oBuffer[size] = '\0';
}

// Tells of a lack of memory as of any other failure.
template <class Step>
auto WithMemory(std::string_view iFile, const char* iStep, Step iDo)
{
    try {
        return iDo();
    } catch (const std::bad_alloc&) {
        RaiseSystemFailure(std::string(iFile), iStep, ENOMEM);
    }
}

} // namespace

// What a repository is: derived from it, so that both are one object.
struct ZORSettingRepository::State final : ZORSettingRepository {
    std::string path; // empty: no directory to keep the file in
    ChangedSettings settings;
    std::unique_ptr<Iteration> iteration;

    Attribute Find(std::string_view iName) const
    {
        const Attribute last = iteration ? iteration->Last(iName, settings) : Attribute();
        return last.Exists() ? last : settings.Find(iName);
    }
};

ZORSettingRepository::ZORSettingRepository() = default;
ZORSettingRepository::~ZORSettingRepository() = default;

ZORSettingRepository::State& ZORSettingRepository::Self()
{
    return static_cast<State&>(*this);
}

ZORSettingRepository* ZORSettingRepository::GetRepository(const char* iName)
{
    const std::string_view name = iName ? iName : "";
    return WithMemory(name, "read it", [&] {
        SettingsPlace place = FindSettings(name);
        auto state = std::make_unique<State>();
        state->settings.text =
            place.exists ? CachedSettings(place.path, place.status) : SettingsText::Nothing();
        state->path = std::move(place.path);
        return state.release();
    });
}

void ZORSettingRepository::ReadSetting(const char* iName, ZORBaseUnknown** ioItems, long iCount)
{
    if (!iName || !ioItems || iCount <= 0)
        return;
    const Attribute attribute = Self().Find(iName);
    if (!attribute.Exists())
        return;
    for (std::size_t i = 0; i < static_cast<std::size_t>(iCount); ++i)
        if (ZORString* const item = AsString(ioItems[i])) {
            const std::string_view text = i < attribute.Count() ? attribute[i] : "";
            *item = "";
            item->Append(text.data(), text.size());
        }
}

void ZORSettingRepository::WriteSetting(const char* iName, ZORBaseUnknown** iItems, long iCount)
{
    const std::string& file = Self().path;
    const std::string_view name = iName ? iName : "";
    if (!iName)
        RaiseFailure(file, "an attribute needs a name");
    if (name.size() > SettingsText::kLongestName)
        RaiseFailure(file, "the name of an attribute has at most " +
                               std::to_string(SettingsText::kLongestName) + " bytes, not " +
                               std::to_string(name.size()));
    WithMemory(file, "change it", [&] {
        std::vector<std::string> items;
        for (long i = 0; i < iCount; ++i) {
            const ZORString* const item = iItems ? AsString(iItems[i]) : nullptr;
            if (!item)
                RaiseFailure(file, "item " + std::to_string(i + 1) + " of the attribute " +
                                       std::string(name) + " is not a ZORString");
            items.emplace_back(item->ConvertToChar(), item->GetLength());
        }
        Self().settings.changes.Write(name, std::move(items));
    });
}

void ZORSettingRepository::DelAttribute(const char* iName)
{
    if (iName)
        WithMemory(Self().path, "change it", [&] { Self().settings.changes.Remove(iName); });
}

void ZORSettingRepository::SaveRepository()
{
    const std::string& path = Self().path;
    ChangedSettings& settings = Self().settings;
    if (settings.changes.IsEmpty())
        return;
    if (path.empty())
        RaiseNoDirectory();
    WithMemory(path, "save it", [&] {
        settings = {SaveSettings(path, settings.text, settings.changes), {}};
        CacheSavedSettings(path, settings.text);
    });
}

int ZORSettingRepository::NextAttribute(char* oName, char* oText, long* oNumber, short)
{
    std::unique_ptr<Iteration>& iteration = Self().iteration;
    if (!iteration)
        WithMemory(Self().path, "list it",
                   [&] { iteration = std::make_unique<Iteration>(Self().settings); });
    std::string_view name;
    const Attribute attribute = iteration->Next(name);
    if (!attribute.Exists())
        return -1;
    const std::size_t count = attribute.Count();
    if (oName)
        FillBuffer(oName, name);
    if (oText)
        FillBuffer(oText, count == 0 ? "" : attribute[count == 1 ? 0 : 1]);
    if (oNumber)
        *oNumber = static_cast<long>(count);
    return 0;
}
