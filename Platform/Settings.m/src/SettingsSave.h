#pragma once

#include "SettingsChanges.h"
#include "SettingsText.h"

#include <memory>
#include <string>

// Makes the changes in the settings file at that path, as it is now, and returns its new text.
// Nobody else's changes are lost; readers see the old file or the new one. `iKnown` is the text as
// it was read before, which saves understanding it again when it is still the same. Raises an error
// that names the file and the step when one fails, with the file as it was.
std::shared_ptr<const SettingsText> SaveSettings(const std::string& iPath,
                                                 const std::shared_ptr<const SettingsText>& iKnown,
                                                 const SettingsChanges& iChanges);
