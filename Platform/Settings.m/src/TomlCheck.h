#pragma once

#include "SettingsFailure.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the TOML library says about a text: the one place of this area that includes it, as it is
// heavy.

struct TomlDamage {
    TextPosition where;
    std::string what;
};

struct TomlName {
    std::string name;
    bool table; // or a list of tables or of lists
};

// Whether the text is sound TOML 1.0: null and, in oNames, the names at its top; else where and
// what is wrong. Takes nested values to a depth of 256; dotted names are not limited here, and the
// library needs stack for each of their parts.
std::optional<TomlDamage> CheckToml(std::string_view iText, std::vector<TomlName>& oNames);
