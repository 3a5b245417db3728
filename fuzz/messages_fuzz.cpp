// The message builder. An input is a family, a tag, up to eight parameters, and a short and a long
// text, which a sound catalog is made of, or the catalog itself as it stands.
#include "CatalogSite.h"
#include "FuzzInput.h"
#include "TomlQuoted.h"
#include "ZORDuxMessenger.h"
#include "ZORRaisedError.h"

#include <iterator>
#include <vector>

namespace
{

struct Family {
    const char* prefix;
    const char* catalog;
};
constexpr Family kFamilies[] = {{"CDA", "ZORDUXCdaErrorMsg"},
                                {"PS_", "ZORDUXPS_ErrorMsg"},
                                {"CFG", "ZORDUXCfgErrorMsg"},
                                {"PNO", "ZORDUXPnoErrorMsg"}};

const Family* FamilyOf(const std::string& iTag)
{
    for (const Family& each : kFamilies)
        if (iTag.starts_with(each.prefix))
            return &each;
    return nullptr;
}

struct Parameter {
    bool number;
    int value;
    std::string text; // as it appears
};

Parameter ReadParameter(FuzzInput& ioInput)
{
    if (ioInput.Byte() % 2 == 0)
        return {false, 0, ioInput.Text()};
    const int value = ioInput.Integer();
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
    return {true, value, text};
}

// The text with its places filled, by definition.
std::string Filled(const std::string& iText, const std::vector<Parameter>& iParameters)
{
    std::string filled;
    for (std::size_t at = 0; at < iText.size(); ++at) {
        filled += iText[at];
        if (iText[at] != '{')
            continue;
        const std::size_t end = iText.find_first_not_of("0123456789", at + 1);
        const std::string digits = iText.substr(at + 1, end - at - 1);
        if (iText.compare(at, 2, "{{") == 0) {
            ++at;
        } else if (end != std::string::npos && iText[end] == '}' && !digits.empty() &&
                   digits.size() <= 2 && digits[0] != '0') {
            const auto place = static_cast<std::size_t>(std::stoi(digits));
            filled.pop_back();
            filled += place <= iParameters.size() ? iParameters[place - 1].text
                                                  : iText.substr(at, end + 1 - at);
            at = end;
        }
    }
    return filled;
}

struct Texts {
    std::string shortMsg;
    std::string longMsg;
    bool raised;
};

Texts Get(ZORDuxMessenger& ioMessenger)
{
    ZORUnicodeString shortMsg;
    ZORUnicodeString longMsg;
    try {
        ioMessenger.GetShortMsg(shortMsg);
        ioMessenger.GetLongMsg(longMsg);
        return {shortMsg.ConvertToChar(), longMsg.ConvertToChar(), false};
    } catch (const ZORRaisedError& raised) {
        Require(*raised.what() != '\0');
        return {"", "", true};
    }
}

// Of a tag whose first characters are bytes.
int ClassOf(const std::string& iTag)
{
    const std::string marker = iTag.size() < 3 ? "" : iTag.substr(3, 3);
    return marker == "_W_" ? 2 : marker == "_I_" ? 1 : -1;
}

void Add(ZORDuxMessenger& ioMessenger, const Parameter& iParameter)
{
    if (iParameter.number)
        ioMessenger.Add(iParameter.value);
    else
        ioMessenger.Add(ZORUnicodeString(iParameter.text.c_str()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    static const CatalogSite site;
    FuzzInput input(iBytes, iSize);
    const unsigned kind = input.Byte();
    const bool sound = kind % 2 == 0;
    const unsigned family = kind / 2 % 5;
    const std::string tag =
        (family < std::size(kFamilies) ? kFamilies[family].prefix : "") + input.Text();
    std::vector<Parameter> parameters;
    for (unsigned count = input.Byte() % 9; count > 0; --count)
        parameters.push_back(ReadParameter(input));
    const Family* const known = FamilyOf(tag);
    const std::string shortMsg = sound ? input.Text() : "";
    const std::string longMsg = sound ? input.Text() : "";
    if (sound && !(IsAscii(tag) && IsAscii(shortMsg) && IsAscii(longMsg)))
        return 0; // other bytes have no form in a catalog, or are text of their own
    if (known)
        site.Write(known->catalog, sound ? "[" + TomlQuoted(tag) +
                                               "]\nShort = " + TomlQuoted(shortMsg) +
                                               "\nLong = " + TomlQuoted(longMsg) + "\n"
                                         : std::string(input.Rest()));

    ZORDuxMessenger messenger;
    messenger.Set(tag.c_str());
    for (const Parameter& each : parameters)
        Add(messenger, each);
    if (known || IsAscii(tag))
        Require(messenger.Ier() == ClassOf(tag));
    const Texts texts = Get(messenger);
    Require(messenger.Ier() == (known ? ClassOf(tag) : -1));
    Require(!texts.raised || (known && !sound));
    if (!known) {
        RequireEqual(texts.shortMsg, "DUX ERROR");
        RequireEqual(texts.longMsg, "Cannot find a valid message file for tag : " + tag);
    } else if (sound) {
        RequireEqual(texts.shortMsg, Filled(shortMsg, parameters));
        RequireEqual(texts.longMsg, Filled(longMsg, parameters));
    }
    const Texts again = Get(messenger);
    Require(!again.raised);
    RequireEqual(again.shortMsg, texts.shortMsg);
    RequireEqual(again.longMsg, texts.longMsg);
    return 0;
}
