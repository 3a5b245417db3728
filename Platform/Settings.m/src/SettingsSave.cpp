#include "SettingsSave.h"

#include "LockedSettings.h"
#include "SettingsEdit.h"

std::shared_ptr<const SettingsText> SaveSettings(const std::string& iPath,
                                                 const std::shared_ptr<const SettingsText>& iKnown,
                                                 const SettingsChanges& iChanges)
{
    LockedSettings settings(iPath);
    std::string old = settings.TakeBytes();
    auto before = old == iKnown->Bytes()
                      ? iKnown
                      : SettingsText::Read(settings.File(), std::move(old), iKnown.get());
    std::string edited = EditSettings(settings.File(), *before, iChanges);
    if (edited == before->Bytes())
        return before;
    auto after = SettingsText::Read(settings.File(), std::move(edited), before.get());
    settings.Replace(after->Bytes());
    return after;
}
