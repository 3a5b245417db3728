#include "IdentifierList.h"

#include "Failure.h"
#include "LineReader.h"

#include <cstring>
#include <vector>

namespace
{

constexpr char kDigits[] = "0123456789abcdef";

bool IsBlank(char iCharacter)
{
    return iCharacter == ' ' || iCharacter == '\t' || iCharacter == '\r' || iCharacter == '\n';
}

int Digit(char iCharacter)
{
    const char lower = iCharacter >= 'A' && iCharacter <= 'F'
                           ? static_cast<char>(iCharacter - 'A' + 'a')
                           : iCharacter;
    const char* const digit = lower ? std::strchr(kDigits, lower) : nullptr;
    return digit ? static_cast<int>(digit - kDigits) : -1;
}

// The octets that the text stands for; false when it is no identifier.
bool Parse(std::string_view iText, _SEQUENCE_octet& oIdentifier)
{
    std::string octets;
    for (std::size_t i = 0; i < iText.size(); ++i) {
        if (IsBlank(iText[i]))
            continue;
        const int high = Digit(iText[i]);
        const int low = ++i < iText.size() ? Digit(iText[i]) : -1;
        if (high < 0 || low < 0)
            return false;
        octets.push_back(static_cast<char>(16 * high + low));
    }
    const auto count = static_cast<int>(octets.size());
    oIdentifier.maximum(count);
    oIdentifier.length(count);
    oIdentifier.boucle(octets.data(), count);
    return true;
}

const char kForm[] = " is no identifier: two hexadecimal digits for each octet";

} // namespace

_SEQUENCE_octet ParsedIdentifier(const std::string& iName, const std::string& iText)
{
    _SEQUENCE_octet identifier;
    if (!Parse(iText, identifier))
        throw UsageError(iName + " is '" + iText + "', which" + kForm);
    return identifier;
}

_SEQUENCE_CORBAAny ReadIdentifiers(const std::string& iFile)
{
    std::vector<CORBAAny> read;
    LineReader reader(iFile);
    while (reader.Next()) {
        _SEQUENCE_octet identifier;
        if (!Parse(reader.Line(), identifier))
            throw Failure(reader.Place() + kForm);
        read.emplace_back() << identifier;
    }
    _SEQUENCE_CORBAAny list;
    const auto count = static_cast<int>(read.size());
    list.maximum(count);
    list.length(count);
    list.boucle(read.data(), count);
    return list;
}

std::string HexadecimalPairs(const _SEQUENCE_octet& iOctets, const char* iBetween)
{
    std::string text;
    for (int i = 0; i < iOctets.length(); ++i) {
        if (i > 0)
            text += iBetween;
        text += kDigits[iOctets[i] >> 4];
        text += kDigits[iOctets[i] & 0xf];
    }
    return text;
}
