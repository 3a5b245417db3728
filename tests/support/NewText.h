#pragma once

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

struct FreeText {
    void operator()(char* iText) const { std::free(iText); }
};
// A string from malloc that is the holder's.
using NewText = std::unique_ptr<char, FreeText>;

// What a new string holds, or no value for null; gives the string back.
inline std::optional<std::string> Take(char* iNewString)
{
    const NewText owned(iNewString);
    return owned ? std::optional<std::string>(owned.get()) : std::nullopt;
}

// What a text that stays its owner's holds.
inline std::optional<std::string> Read(const char* iText)
{
    return iText ? std::optional<std::string>(iText) : std::nullopt;
}
