#include "ZORSettingText.h"

#include "LockedSettings.h"
#include "SettingsCache.h"
#include "SettingsFailure.h"
#include "SettingsPath.h"
#include "SettingsText.h"

#include <fcntl.h>

ZORSettingText::ZORSettingText(const char* iName)
{
    SettingsPlace place = FindSettings(iName ? iName : "");
    if (place.path.empty())
        RaiseNoDirectory();
    _File = std::move(place.path);
    if (auto file = ReadSettingsFile(_File, AT_FDCWD, _File.c_str()))
        _Bytes = std::move(file->bytes);
}

void ZORSettingText::Check(std::string_view iBytes) const
{
    SettingsText::Read(_File, std::string(iBytes), nullptr);
}

bool ZORSettingText::Replace(std::string_view iBytes)
{
    auto text = SettingsText::Read(_File, std::string(iBytes), nullptr);
    LockedSettings settings(_File);
    if (settings.TakeBytes() != _Bytes)
        return false;
    if (iBytes == _Bytes)
        return true;
    settings.Replace(iBytes);
    _Bytes = iBytes;
    CacheSavedSettings(_File, std::move(text));
    return true;
}
