// Every word and string function against the plain model. An input is four characters (separator,
// from, to, place), three numbers of two bytes, and up to four texts with a NUL behind each.
#include "FuzzInput.h"
#include "StringComparison.h"

#include <cstddef>
#include <cstdint>

namespace
{
StringArguments ArgumentsOf(FuzzInput iInput)
{
    StringArguments arguments;
    arguments.separator = iInput.Character();
    arguments.from = iInput.Character();
    arguments.to = iInput.Character();
    arguments.place = static_cast<StringArguments::Place>(iInput.Byte() % 3);
    arguments.first = iInput.Number();
    arguments.second = iInput.Number();
    arguments.width = iInput.Number() % 2048;
    arguments.text = iInput.Text();
    arguments.other = iInput.Text();
    arguments.mode = iInput.Text();
    arguments.character = iInput.Text();
    return arguments;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    constexpr std::size_t kLargest = 16384;
    if (iSize > kLargest)
        return 0;
    RequireEqual(CompareWithModel(ArgumentsOf(FuzzInput(iBytes, iSize))), "");
    return 0;
}
