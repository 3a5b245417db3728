#pragma once

#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"
#include "ZORError.h"
#include "ZORRaisedError.h"
#include "ZORSettingRepository.h"
#include "ZORString.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using Strings = std::vector<std::string>;

inline std::unique_ptr<ZORSettingRepository> OpenSettings(const std::string& iName)
{
    return std::unique_ptr<ZORSettingRepository>(
        ZORSettingRepository::GetRepository(iName.c_str()));
}

inline std::string TextOf(const ZORString& iString)
{
    return {iString.ConvertToChar(), iString.GetLength()};
}

// The texts of an attribute; those it does not have stay "-".
inline std::pair<std::string, std::string> Read(ZORSettingRepository& iSettings,
                                                const std::string& iName)
{
    ZORString first = "-", second = "-";
    ZORBaseUnknown* items[] = {&first, &second};
    iSettings.ReadSetting(iName.c_str(), items, 2);
    return {TextOf(first), TextOf(second)};
}

inline void Write(ZORSettingRepository& ioSettings, const std::string& iName, const Strings& iTexts)
{
    std::vector<std::unique_ptr<ZORString>> strings;
    std::vector<ZORBaseUnknown*> items;
    for (const std::string& each : iTexts) {
        strings.push_back(std::make_unique<ZORString>(each.c_str()));
        items.push_back(strings.back().get());
    }
    ioSettings.WriteSetting(iName.c_str(), items.data(), static_cast<long>(items.size()));
}

inline Strings ListNames(ZORSettingRepository& ioSettings)
{
    Strings names;
    char name[200], text[200];
    long number;
    while (ioSettings.NextAttribute(name, text, &number, 0) != -1)
        names.emplace_back(name);
    return names;
}

// The text of the error that a step raises; nothing when it raises none.
template <class Step>
std::optional<std::string> ErrorOf(Step iDo)
{
    try {
        iDo();
        return std::nullopt;
    } catch (const ZORRaisedError& raised) {
        return raised.Error().GetMessage(0).ConvertToChar();
    }
}

// A directory of settings files for one test, and what is done to one of them the way the services
// do it: a repository of its own each time.
class RepositorySite
{
public:
    RepositorySite() : RepositorySite(MemoryDirectory()) {}
    // A site in that directory, above all on a file system of another kind.
    explicit RepositorySite(const std::string& iWhere)
        : _Temporary("TMPDIR", iWhere), _Path("ZOR_SETTINGS_PATH", _Directory.Path().string())
    {
    }

    const ScopedDirectory& Directory() const { return _Directory; }
    std::string operator/(const std::string& iName) const { return _Directory / iName; }

    void Put(const std::string& iName, const std::string& iValue,
             const std::string& iFile = "site") const
    {
        const auto settings = OpenSettings(iFile);
        Write(*settings, iName, {iName, iValue});
        settings->SaveRepository();
    }

    void Remove(const std::string& iName, const std::string& iFile = "site") const
    {
        const auto settings = OpenSettings(iFile);
        settings->DelAttribute(iName.c_str());
        settings->SaveRepository();
    }

    // The value, or "-" when there is none.
    std::string Get(const std::string& iName, const std::string& iFile = "site") const
    {
        return Read(*OpenSettings(iFile), iName).second;
    }

    Strings List(const std::string& iFile = "site") const
    {
        return ListNames(*OpenSettings(iFile));
    }

    // The bytes of site.toml.
    std::string Bytes() const { return _Directory.Read("site.toml"); }
    void SetBytes(const std::string& iBytes) const { _Directory.Write("site.toml", iBytes); }

private:
    // Where nothing waits for a disk, so that a test can save thousands of times.
    static std::string MemoryDirectory()
    {
        return std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp";
    }

    ScopedEnvironment _Temporary;
    ScopedDirectory _Directory;
    ScopedEnvironment _Path;
};
