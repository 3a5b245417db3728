#pragma once

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <string>

// A directory of settings files of the test's own, in force until the end of the scope.
class SettingsSite
{
public:
    // Writes the settings file of that name.
    void Write(const std::string& iName, const std::string& iText) const
    {
        _Directory.Write(iName + ".toml", iText);
    }
    std::string Read(const std::string& iName) const { return _Directory.Read(iName + ".toml"); }
    const ScopedDirectory& Directory() const { return _Directory; }

private:
    ScopedDirectory _Directory;
    ScopedEnvironment _Path{"ZOR_SETTINGS_PATH", _Directory.Path().string()};
};
