// The text of a dictionary file: whatever it is, it is understood or told of, and what is
// understood can be used.
#include "DictionaryText.h"
#include "FuzzInput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace
{

bool IsName(const std::string& iText)
{
    return !iText.empty() && iText.find('\0') == std::string::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    const std::string_view text(reinterpret_cast<const char*>(iBytes), iSize);
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    const DictionaryText read = ReadDictionaryText(text);
    for (const DictionaryEntry& each : read.entries) {
        Require(IsName(each.className) && IsName(each.interfaceName));
        Require(IsName(each.library) && IsName(each.creator));
        Require(each.line >= 1 && each.line <= lines);
    }
    for (const DictionaryMistake& each : read.mistakes)
        Require(!each.what.empty() && each.line >= 1 && each.line <= lines);
    return 0;
}
