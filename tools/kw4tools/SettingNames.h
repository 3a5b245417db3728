#pragma once

#include <string>

// Whether the settings file has a setting under that name, an empty one included. Raises as the
// settings repository does.
bool HasSetting(const std::string& iFile, const std::string& iName);
