// Texts in a map, parsed before, built by ICU.
#include "messages_rows.h"

#include <memory>
#include <unicode/msgfmt.h>
#include <unordered_map>

namespace
{

const Rows kRows([] {
    Row("build", "ICU", [](benchmark::State& ioState) {
        UErrorCode failure = U_ZERO_ERROR;
        std::unordered_map<std::string, std::unique_ptr<icu::MessageFormat>> texts;
        ForEachMessage([&](const std::string& iTag, int iNumber) {
            const std::string text = MessageText(iNumber, "{0}", "{1}");
            texts[iTag] =
                std::make_unique<icu::MessageFormat>(icu::UnicodeString::fromUTF8(text), failure);
        });
        const std::string key = kTag;
        RunMessage(ioState, [&] {
            const icu::Formattable parameters[] = {icu::UnicodeString::fromUTF8(kPart),
                                                   icu::UnicodeString::fromUTF8(kUser)};
            icu::UnicodeString text;
            icu::FieldPosition ignored;
            texts.find(key)->second->format(parameters, 2, text, ignored, failure);
            std::string bytes;
            return text.toUTF8String(bytes);
        });
    });
});

} // namespace
