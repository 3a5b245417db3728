#pragma once

#include <string>

// Whether the settings file has a setting under that name, an empty one included. Errors of the
// settings repository are told and go on.
bool HasSetting(const std::string& iFile, const std::string& iName);
