// Texts of a compiled catalog of GNU gettext, built by Boost.
#include "messages_rows.h"

#include "ScopedDirectory.h"

#include <boost/format.hpp>
#include <clocale>
#include <cstdint>
#include <libintl.h>
#include <vector>

namespace
{

// A compiled catalog: a head, a table of keys, a table of texts (each a length and a place), all
// sorted by key, and the characters.
std::string CompiledCatalog()
{
    constexpr std::uint32_t kHead = 28;
    std::vector<std::string> keys;
    std::vector<std::string> texts;
    ForEachMessage([&](const std::string& iTag, int iNumber) {
        keys.push_back(iTag);
        texts.push_back(MessageText(iNumber, "%1%", "%2%"));
    });
    const auto count = static_cast<std::uint32_t>(keys.size());
    std::vector<std::uint32_t> numbers{0x950412de, 0, count, kHead, kHead + 8 * count, 0, 0};
    std::string characters;
    const std::uint32_t begin = kHead + 16 * count;
    for (const std::vector<std::string>* each : {&keys, &texts})
        for (const std::string& text : *each) {
            numbers.push_back(static_cast<std::uint32_t>(text.size()));
            numbers.push_back(begin + static_cast<std::uint32_t>(characters.size()));
            characters.append(text.c_str(), text.size() + 1);
        }
    return std::string(reinterpret_cast<const char*>(numbers.data()), 4 * numbers.size()) +
           characters;
}

const Rows kRows([] {
    Row("build", "gettext + boost::format", [](benchmark::State& ioState) {
        const ScopedDirectory directory;
        directory.Write("fr/LC_MESSAGES/Bench.mo", CompiledCatalog());
        setlocale(LC_ALL, "C.UTF-8");
        setenv("LANGUAGE", "fr", 1);
        bindtextdomain("Bench", directory.Path().c_str());
        RunMessage(ioState,
                   [] { return (boost::format(dgettext("Bench", kTag)) % kPart % kUser).str(); });
        unsetenv("LANGUAGE");
        setlocale(LC_ALL, "C");
    });
});

} // namespace
