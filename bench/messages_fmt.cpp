// Texts in a map, built by {fmt}.
#include "messages_rows.h"

#include <fmt/format.h>
#include <unordered_map>

namespace
{

const Rows kRows([] {
    Row("build", "{fmt}", [](benchmark::State& ioState) {
        std::unordered_map<std::string, std::string> texts;
        ForEachMessage([&](const std::string& iTag, int iNumber) {
            texts[iTag] = MessageText(iNumber, "{0}", "{1}");
        });
        const std::string key = kTag;
        RunMessage(ioState, [&] {
            return fmt::format(fmt::runtime(texts.find(key)->second), kPart, kUser);
        });
    });
});

} // namespace
