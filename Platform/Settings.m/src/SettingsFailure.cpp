#include "SettingsFailure.h"

#include "RaiseWithText.h"
#include "ZORSettingError.h"

#include <algorithm>
#include <system_error>

TextPosition PositionOf(std::string_view iText, std::size_t iOffset)
{
    const std::string_view before = iText.substr(0, iOffset);
    const auto breaks = std::count(before.begin(), before.end(), '\n');
    const std::size_t begin = before.rfind('\n') + 1; // npos + 1 is the beginning of the text
    std::string_view line = before.substr(begin);
    if (begin == 0 && line.starts_with("\xEF\xBB\xBF"))
        line.remove_prefix(3);
    const auto characters = std::count_if(line.begin(), line.end(), [](char each) {
        return (static_cast<unsigned char>(each) & 0xC0) != 0x80;
    });
    return {static_cast<std::size_t>(breaks) + 1, static_cast<std::size_t>(characters) + 1};
}

void RaiseFailure(const std::string& iFile, const std::string& iWhat)
{
    RaiseWithText<ZORSettingError>("settings file " + iFile + ": " + iWhat,
                                   "Platform/Settings.m/src/SettingsFailure", __LINE__);
}

void RaiseSystemFailure(const std::string& iFile, const std::string& iStep, int iError)
{
    RaiseFailure(iFile, "cannot " + iStep + ": " + std::system_category().message(iError));
}

void RaiseDamage(const std::string& iFile, TextPosition iWhere, const std::string& iWhat)
{
    RaiseFailure(iFile, "line " + std::to_string(iWhere.line) + ", column " +
                            std::to_string(iWhere.column) + ": " + iWhat);
}

void RaiseNoDirectory()
{
    RaiseFailure("(none)", "there is no directory to keep it in: set ZOR_SETTINGS_PATH, "
                           "XDG_CONFIG_HOME or HOME");
}
