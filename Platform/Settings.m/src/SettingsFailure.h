#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// How the settings area fails: each of these raises a ZORSettingError that names the file.

// A place in a text: line and column from 1, the column in characters.
struct TextPosition {
    std::size_t line;
    std::size_t column;
};

TextPosition PositionOf(std::string_view iText, std::size_t iOffset);

// "<file>: <what>"
[[noreturn]] void RaiseFailure(const std::string& iFile, const std::string& iWhat);

// "<file>: cannot <step>: <what the system says about iError>"
[[noreturn]] void RaiseSystemFailure(const std::string& iFile, const std::string& iStep,
                                     int iError);

// "<file>: line 3, column 5: <what>"
[[noreturn]] void RaiseDamage(const std::string& iFile, TextPosition iWhere,
                              const std::string& iWhat);

// "(none): there is no directory to keep it in: …"
[[noreturn]] void RaiseNoDirectory();
