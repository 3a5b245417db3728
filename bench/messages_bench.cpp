// A message of a catalog that was read before, with two parameters in its places.
#include "messages_rows.h"

#include "CatalogSite.h"
#include "ZORHandle.h"
#include "ZORMsg.h"
#include "ZORMsgCatalog.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace
{

void Build(benchmark::State& ioState)
{
    const CatalogSite site;
    std::string texts;
    ForEachMessage([&](const std::string& iTag, int iNumber) {
        texts += iTag + " = \"" + MessageText(iNumber, "{1}", "{2}") + "\"\n";
    });
    site.Write("Bench", texts);
    const auto catalog = ZORHandle<ZORMsgCatalog>::Adopt(new ZORMsgCatalog("Bench"));
    const ZORUnicodeString key = kTag;
    const ZORUnicodeString parameters[] = {kPart, kUser};
    RunMessage(ioState, [&] {
        const auto message = ZORHandle<ZORMsg>::Adopt(catalog->GetMsg(key));
        return message->BuildMessage(parameters);
    });
}

// Copies the pieces between the places, of which there are at most nine.
std::string Fill(std::string_view iText, const std::string_view* iParameters)
{
    std::string filled;
    for (std::size_t place; (place = iText.find('{')) != std::string_view::npos;) {
        filled.append(iText.substr(0, place));
        filled.append(iParameters[iText[place + 1] - '1']);
        iText.remove_prefix(place + 3);
    }
    return filled.append(iText);
}

void BuildByHand(benchmark::State& ioState)
{
    std::unordered_map<std::string, std::string> texts;
    ForEachMessage([&](const std::string& iTag, int iNumber) {
        texts[iTag] = MessageText(iNumber, "{1}", "{2}");
    });
    const std::string key = kTag;
    const std::string_view parameters[] = {kPart, kUser};
    RunMessage(ioState, [&] { return Fill(texts.find(key)->second, parameters); });
}

const Rows kRows([] {
    Row("build", "ours", Build);
    Row("build", "reference", BuildByHand);
});

} // namespace
