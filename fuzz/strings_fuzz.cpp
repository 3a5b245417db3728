// Every word and string function against the plain model. An input is four characters (separator,
// from, to, place), three numbers of two bytes, and up to four texts with a NUL behind each.
#include "StringComparison.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace
{
class Input
{
public:
    explicit Input(std::string_view iBytes) : _Rest(iBytes) {}

    char Character()
    {
        if (_Rest.empty())
            return '\0';
        const char first = _Rest.front();
        _Rest.remove_prefix(1);
        return first;
    }
    unsigned Byte() { return static_cast<unsigned char>(Character()); }
    // The last 536 stand for the largest numbers there are.
    unsigned Number()
    {
        const unsigned low = Byte();
        const unsigned number = Byte() << 8 | low;
        return number < 65000 ? number : 0xffff0000 | number;
    }
    std::string Text()
    {
        const std::size_t size = std::min(_Rest.find('\0'), _Rest.size());
        const std::string text(_Rest.substr(0, size));
        _Rest.remove_prefix(std::min(size + 1, _Rest.size()));
        return text;
    }

private:
    std::string_view _Rest;
};

StringArguments ArgumentsOf(Input iInput)
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
    const std::string differences =
        CompareWithModel(ArgumentsOf(Input({reinterpret_cast<const char*>(iBytes), iSize})));
    if (!differences.empty()) {
        std::fprintf(stderr, "%s", differences.c_str());
        std::abort();
    }
    return 0;
}
