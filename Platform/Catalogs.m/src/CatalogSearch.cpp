#include "CatalogSearch.h"

#include "ZORGetEnv.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <system_error>

namespace
{

std::string_view Variable(const char* iName)
{
    const char* const value = ZORGetEnv(iName);
    return value ? value : std::string_view();
}

// The pieces between colons; empty ones are left out.
std::vector<std::string> Pieces(std::string_view iList)
{
    std::vector<std::string> pieces;
    while (!iList.empty()) {
        const std::string_view piece = iList.substr(0, iList.find(':'));
        if (!piece.empty())
            pieces.emplace_back(piece);
        iList.remove_prefix(std::min(piece.size() + 1, iList.size()));
    }
    return pieces;
}

// Beside this library, so that an installed tree may be moved.
std::string FindInstalledDirectory()
{
    Dl_info info;
    char library[PATH_MAX];
    if (!dladdr(reinterpret_cast<const void*>(&CatalogPaths), &info) ||
        !realpath(info.dli_fname, library))
        return ZOR_CATALOG_DIRECTORY;
    const std::filesystem::path directory = std::filesystem::path(library).parent_path();
    return (directory / ZOR_CATALOG_DIRECTORY_FROM_LIBRARY).lexically_normal().string();
}

const std::string& InstalledDirectory()
{
    static const std::string* const directory = new std::string(FindInstalledDirectory());
    return *directory;
}

bool IsNone(std::string_view iLocale)
{
    return iLocale == "C" || iLocale == "POSIX";
}

// Whether the name of a locale is also one of a directory, and of none elsewhere.
bool IsName(std::string_view iLocale)
{
    return !iLocale.empty() && iLocale.front() != '.' &&
           iLocale.find('/') == std::string_view::npos;
}

// A name has the form language[_territory][.codeset][@modifier].
std::vector<std::string> FormsOf(const std::string& iLocale)
{
    const std::size_t at = iLocale.find('@');
    const std::string modifier = at == std::string::npos ? "" : iLocale.substr(at);
    const std::string place = iLocale.substr(0, iLocale.find_first_of(".@"));
    const std::string language = place.substr(0, place.find('_'));
    std::vector<std::string> forms;
    for (const std::string& form :
         {iLocale, place + modifier, place, language + modifier, language})
        if (IsName(form) && std::find(forms.begin(), forms.end(), form) == forms.end())
            forms.push_back(form);
    return forms;
}

} // namespace

std::vector<std::string> CatalogDirectories()
{
    std::vector<std::string> directories = Pieces(Variable("ZOR_CATALOG_PATH"));
    directories.push_back(InstalledDirectory());
    return directories;
}

bool IsCatalogName(std::string_view iCatalog)
{
    return !iCatalog.empty() && iCatalog.find('/') == std::string_view::npos;
}

std::vector<std::string> LocalesIn(const std::string& iDirectory)
{
    std::vector<std::string> locales;
    std::error_code failure;
    for (std::filesystem::directory_iterator each(iDirectory, failure), end;
         !failure && each != end; each.increment(failure)) {
        std::error_code ignored;
        std::string name = each->path().filename().string();
        if (IsName(name) && each->is_directory(ignored))
            locales.push_back(std::move(name));
    }
    return locales;
}

// LANGUAGE, a list, counts only for users who have a locale at all; "C" in it ends it.
std::vector<std::vector<std::string>> LocaleNames()
{
    std::string_view locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (locale = Variable(name); !locale.empty())
            break;
    std::vector<std::vector<std::string>> names;
    if (locale.empty() || IsNone(locale))
        return names;
    const std::string_view list = Variable("LANGUAGE");
    for (const std::string& each : list.empty() ? std::vector{std::string(locale)} : Pieces(list)) {
        if (IsNone(each))
            break;
        if (IsName(each))
            names.push_back(FormsOf(each));
    }
    return names;
}

std::string CatalogPath(const std::string& iDirectory, std::string_view iLocale,
                        std::string_view iCatalog)
{
    std::string path = iDirectory + "/";
    if (!iLocale.empty())
        path.append(iLocale).append("/");
    return path.append(iCatalog).append(".toml");
}

std::vector<std::string> CatalogPaths(std::string_view iCatalog)
{
    std::vector<std::string> paths;
    if (!IsCatalogName(iCatalog))
        return paths;
    const std::vector<std::string> directories = CatalogDirectories();
    for (const std::vector<std::string>& forms : LocaleNames())
        for (const std::string& directory : directories)
            for (const std::string& form : forms)
                paths.push_back(CatalogPath(directory, form, iCatalog));
    for (const std::string& directory : directories)
        paths.push_back(CatalogPath(directory, "", iCatalog));
    return paths;
}
