#include "ZORSettingOrigin.h"

#include "SettingsCache.h"
#include "SettingsFailure.h"
#include "SettingsPath.h"

std::optional<ZORSettingOrigin> ZORFindSettingOrigin(const char* iFile, const char* iName)
{
    SettingsPlace place = FindSettings(iFile ? iFile : "");
    if (!iName)
        RaiseFailure(place.path, "an attribute needs a name");
    if (!place.exists)
        return std::nullopt;
    const auto text = CachedSettings(place.path, place.status);
    const SettingsEntry* const entry = text->Find(iName);
    if (!entry || !entry->IsAttribute())
        return std::nullopt;
    const TextPosition position = PositionOf(text->Bytes(), entry->key);
    return ZORSettingOrigin{std::move(place.path), position.line, position.column};
}
