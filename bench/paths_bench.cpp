// A file sought along a path: the services, the least that the system has to do for it (an access
// for each directory), and what one would use instead.

#include "CreateServices.h"
#include "paths_site.h"

#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>

namespace
{

std::string SeekByHand(std::string_view iName, const char* iPath)
{
    std::string candidate;
    while (*iPath) {
        const char* const end = strchrnul(iPath, ':');
        candidate.assign(iPath, end).append("/").append(iName);
        if (access(candidate.c_str(), F_OK) == 0)
            return candidate;
        iPath = *end ? end + 1 : end;
    }
    return {};
}

std::string SeekWithFilesystem(const std::string& iName, const std::string& iPath)
{
    for (std::size_t begin = 0; begin < iPath.size();) {
        const std::size_t end = std::min(iPath.find(':', begin), iPath.size());
        const auto candidate = std::filesystem::path(iPath.substr(begin, end - begin)) / iName;
        if (std::filesystem::exists(candidate))
            return candidate.string();
        begin = end + 1;
    }
    return {};
}

class Ours
{
public:
    explicit Ours(const SearchSite& iSite)
        : _Directories("ZOR_SETTINGS_PATH", iSite.site.root / "settings")
    {
        std::string text;
        for (const auto& [name, value] : iSite.settings)
            text += name + " = \"" + value + "\"\n";
        iSite.site.root.Write("settings/DUXAdmin.toml", text);
        _Services->PutSettingSeparator(":");
    }
    ZORUnicodeString Find(const ZORUnicodeString& iName) { return _Services->SearchPath(iName); }

private:
    const ScopedEnvironment _Directories;
    ZORIDuxServices_var _Services = CreateServices();
};

// A table of the settings that one look at the file tells to be good; then each entry expanded and
// tried.
class Reference
{
public:
    explicit Reference(const SearchSite& iSite)
        : _File(iSite.site.root.Write("settings", "")),
          _Settings(iSite.settings.begin(), iSite.settings.end())
    {
        stat(_File.c_str(), &_Status);
    }
    std::string Find(const char* iName)
    {
        struct stat status;
        stat(_File.c_str(), &status);
        if (status.st_ino != _Status.st_ino || status.st_mtim.tv_nsec != _Status.st_mtim.tv_nsec)
            return {};
        const std::string& path = _Settings.find("DUX_SEARCH_PATH")->second;
        std::string candidate;
        for (std::size_t begin = 0; begin < path.size();) {
            const std::size_t end = std::min(path.find(':', begin), path.size());
            Expand(std::string_view(path).substr(begin, end - begin), candidate);
            candidate.append("/").append(iName);
            if (access(candidate.c_str(), F_OK) == 0)
                return candidate;
            begin = end + 1;
        }
        return {};
    }

private:
    void Expand(std::string_view iEntry, std::string& oText) const
    {
        if (iEntry.substr(0, 2) == "$$")
            iEntry = _Settings.find(std::string(iEntry.substr(2)))->second;
        const std::size_t dollar = iEntry.find('$');
        if (dollar == std::string_view::npos) {
            oText = iEntry;
            return;
        }
        const std::size_t end = std::min(iEntry.find('/', dollar), iEntry.size());
        const std::string name(iEntry.substr(dollar + 1, end - dollar - 1));
        oText.assign(iEntry.substr(0, dollar)).append(std::getenv(name.c_str()));
        oText.append(iEntry.substr(end));
    }

    const std::string _File;
    struct stat _Status;
    const std::unordered_map<std::string, std::string> _Settings;
};

const Rows kRows([] {
    SeekFileRows<ZORUnicodeString>("ours", [](const auto& iName, const auto& iPath) {
        static const ZORIDuxServices_var services = [] {
            ZORIDuxServices_var made = CreateServices();
            made->PutSettingSeparator(":");
            return made;
        }();
        return services->SeekFile(iName, iPath);
    });
    SeekFileRows<std::string>("reference", [](const auto& iName, const auto& iPath) {
        return SeekByHand(iName, iPath.c_str());
    });
    SeekFileRows<std::string>("std::filesystem", SeekWithFilesystem);
    SearchPathRow<Ours>("ours");
    SearchPathRow<Reference>("reference");
});

} // namespace
