#include "SettingsPath.h"

#include "Descriptor.h"
#include "SettingsFailure.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace
{

std::string_view Variable(const char* iName)
{
    const char* const value = std::getenv(iName);
    return value ? value : "";
}

std::string DefaultDirectory()
{
    // A relative path there is to be ignored, as the XDG base directory rules have it.
    const std::string_view configuration = Variable("XDG_CONFIG_HOME");
    if (configuration.starts_with('/'))
        return std::string(configuration) + "/zor";
    const std::string_view home = Variable("HOME");
    return home.empty() ? std::string() : std::string(home) + "/.config/zor";
}

// Walks over the directories without a copy of the list.
class Directories
{
public:
    Directories() : _Rest(Variable("ZOR_SETTINGS_PATH"))
    {
        if (_Rest.empty())
            _Default = DefaultDirectory();
    }

    // The next directory; empty behind the last.
    std::string_view Next()
    {
        if (!_Default.empty() && !_DefaultGiven) {
            _DefaultGiven = true;
            return _Default;
        }
        std::string_view next;
        while (next.empty() && !_Rest.empty()) {
            next = _Rest.substr(0, _Rest.find(':'));
            _Rest.remove_prefix(std::min(next.size() + 1, _Rest.size()));
        }
        return next;
    }

private:
    std::string_view _Rest;
    std::string _Default;
    bool _DefaultGiven = false;
};

std::string PathIn(std::string_view iDirectory, std::string_view iName)
{
    constexpr std::string_view suffix = ".toml";
    std::string path;
    path.reserve(iDirectory.size() + 1 + iName.size() + suffix.size());
    path += iDirectory;
    if (!path.ends_with('/'))
        path += '/';
    return (path += iName) += suffix;
}

bool Look(const std::string& iPath, struct stat& oStatus)
{
    if (stat(iPath.c_str(), &oStatus) == 0)
        return true;
    if (errno != ENOENT && errno != ENOTDIR)
        RaiseSystemFailure(iPath, "look for it", errno);
    return false;
}

} // namespace

std::vector<std::string> SettingsDirectories()
{
    std::vector<std::string> all;
    Directories directories;
    for (std::string_view each = directories.Next(); !each.empty(); each = directories.Next())
        all.emplace_back(each);
    return all;
}

SettingsPlace FindSettings(std::string_view iName)
{
    if (iName.empty())
        RaiseFailure("(no name)", "a settings file needs a name");
    SettingsPlace place{};
    if (iName.find('/') != std::string_view::npos) {
        place.path = iName;
        place.exists = Look(place.path, place.status);
        return place;
    }
    Directories directories;
    std::string_view each = directories.Next();
    const std::string_view first = each;
    for (; !each.empty() && !place.exists; each = directories.Next()) {
        place.path = PathIn(each, iName);
        place.exists = Look(place.path, place.status);
    }
    if (!place.exists && !first.empty())
        place.path = PathIn(first, iName);
    return place;
}

std::string DirectoryOf(std::string_view iPath)
{
    const std::size_t slash = iPath.rfind('/');
    if (slash == std::string_view::npos)
        return ".";
    const std::size_t end = iPath.find_last_not_of('/', slash);
    return end == std::string_view::npos ? "/" : std::string(iPath.substr(0, end + 1));
}

std::string_view FileNameOf(std::string_view iPath)
{
    return iPath.substr(iPath.rfind('/') + 1); // npos + 1 is the beginning
}

std::string FollowLinks(std::string iPath)
{
    const std::string start = iPath;
    constexpr int kMostLinks = 40; // as many as the kernel follows
    for (int links = 0; links <= kMostLinks; ++links) {
        char target[PATH_MAX];
        const ssize_t length = readlink(iPath.c_str(), target, sizeof target);
        if (length < 0 && errno != EINVAL && errno != ENOENT)
            RaiseSystemFailure(start, "reach " + iPath, errno);
        if (length < 0)
            return iPath;
        const std::string_view next(target, static_cast<std::size_t>(length));
        iPath = next.starts_with('/') ? std::string(next)
                                      : DirectoryOf(iPath) + '/' + std::string(next);
    }
    RaiseSystemFailure(start, "follow its links", ELOOP);
}
