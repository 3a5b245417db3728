#include "ZORMsgCatalogDifferences.h"

#include "CatalogFailure.h"
#include "CatalogFile.h"
#include "CatalogSearch.h"
#include "MessagePlaces.h"
#include "RaiseWithText.h"
#include "ZORMsgError.h"

#include <map>
#include <set>

namespace
{

using Locales = std::map<std::string, CatalogText>; // texts for all are under ""

std::string LanguageOf(const std::string& iLocale)
{
    return iLocale.substr(0, iLocale.find_first_of("_.@"));
}

// Adds the texts of a later directory to those of earlier ones.
void Add(CatalogText& ioTexts, const CatalogText& iLater)
{
    ioTexts.texts.insert(iLater.texts.begin(), iLater.texts.end());
    ioTexts.others.insert(iLater.others.begin(), iLater.others.end());
}

Locales ReadLocales(const std::string& iCatalog)
{
    Locales locales;
    if (!IsCatalogName(iCatalog))
        return locales;
    for (const std::string& directory : CatalogDirectories()) {
        std::vector<std::string> names = LocalesIn(directory);
        names.emplace_back();
        for (const std::string& locale : names)
            if (const auto texts = ReadCatalog(CatalogPath(directory, locale, iCatalog)))
                Add(locales[locale], *texts);
    }
    return locales;
}

// One key in all locales.
class Comparison
{
public:
    Comparison(const Locales& iLocales, const std::string& iKey) : _Locales(iLocales), _Key(iKey)
    {
        for (const auto& [locale, catalog] : _Locales)
            if (const std::string* const text = Find(catalog))
                _Places.merge(PlacesIn(*text));
    }

    void AddDifferences(std::vector<std::string>& oLines) const
    {
        for (const auto& [locale, catalog] : _Locales) {
            const std::string where = " in " + (locale.empty() ? "default" : locale);
            if (const std::string* const text = Find(catalog))
                AddPlaces(PlacesIn(*text), where, oLines);
            else if (catalog.others.contains(_Key))
                oLines.push_back(_Key + " is not a text" + where);
            else if (!Inherits(locale))
                oLines.push_back(_Key + " is missing" + where);
        }
    }

private:
    const std::string* Find(const CatalogText& iCatalog) const
    {
        const auto found = iCatalog.texts.find(_Key);
        return found == iCatalog.texts.end() ? nullptr : &found->second;
    }

    void AddPlaces(const std::set<int>& iOwn, const std::string& iWhere,
                   std::vector<std::string>& oLines) const
    {
        for (const int place : _Places)
            if (!iOwn.contains(place))
                oLines.push_back(_Key + " has no place {" + std::to_string(place) + "}" + iWhere);
    }

    // Whether the text of that locale is its language's matter.
    bool Inherits(const std::string& iLocale) const
    {
        const std::string language = LanguageOf(iLocale);
        return language != iLocale && _Locales.contains(language);
    }

    const Locales& _Locales;
    const std::string& _Key;
    std::set<int> _Places; // in any locale
};

std::vector<std::string> Differences(const Locales& iLocales)
{
    std::set<std::string> keys;
    for (const auto& [locale, catalog] : iLocales) {
        for (const auto& [key, text] : catalog.texts)
            keys.insert(key);
        keys.insert(catalog.others.begin(), catalog.others.end());
    }
    std::vector<std::string> lines;
    for (const std::string& key : keys)
        Comparison(iLocales, key).AddDifferences(lines);
    return lines;
}

} // namespace

std::vector<std::string> ZORMsgCatalogDifferences(const char* iCatalog)
{
    constexpr char kFile[] = "Platform/Catalogs.m/src/ZORMsgCatalogDifferences";
    Locales locales;
    try {
        locales = ReadLocales(iCatalog);
    } catch (const CatalogFailure& failure) {
        RaiseWithText<ZORMsgError>(failure.what(), kFile, __LINE__);
    }
    if (locales.empty())
        RaiseWithText<ZORMsgError>(std::string("message catalog ") + iCatalog + ": not found",
                                   kFile, __LINE__);
    return Differences(locales);
}
