#include "TomlBytes.h"

#include "Utf8Characters.h"

#include <cstdint>
#include <cstring>

namespace
{

// What sort of bytes occur in a text.
struct ByteKinds {
    bool control; // other than tab, line feed and carriage return
    bool carriageReturn;
    bool high; // above 127
};

using Block = unsigned char __attribute__((vector_size(16)));

bool IsAnySet(Block iBlock)
{
    std::uint64_t halves[2];
    std::memcpy(halves, &iBlock, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

class ByteLook
{
public:
    void Take(const Block& iBlock)
    {
        const Block isReturn = reinterpret_cast<Block>(iBlock == '\r');
        const Block isSpace =
            reinterpret_cast<Block>((iBlock == '\n') | (iBlock == '\t')) | isReturn;
        _Control |= reinterpret_cast<Block>((iBlock < 0x20) | (iBlock == 0x7F)) & ~isSpace;
        _Return |= isReturn;
        _High |= iBlock & 0x80;
    }

    ByteKinds Kinds() const { return {IsAnySet(_Control), IsAnySet(_Return), IsAnySet(_High)}; }

private:
    Block _Control{};
    Block _Return{};
    Block _High{};
};

ByteKinds LookAtBytes(std::string_view iText)
{
    ByteLook look;
    Block block;
    for (; iText.size() >= sizeof block; iText.remove_prefix(sizeof block)) {
        std::memcpy(&block, iText.data(), sizeof block);
        look.Take(block);
    }
    block = Block{} + static_cast<unsigned char>(' ');
    std::memcpy(&block, iText.data(), iText.size());
    look.Take(block);
    return look.Kinds();
}

// The first byte that is part of no UTF-8 character, or npos.
std::size_t FindIllFormed(std::string_view iText)
{
    for (std::size_t at = 0; at < iText.size();) {
        const std::size_t length = Utf8FirstLength(iText.substr(at));
        if (length == 1 && static_cast<unsigned char>(iText[at]) >= 0x80)
            return at;
        at += length;
    }
    return std::string_view::npos;
}

bool HasLoneCarriageReturn(std::string_view iText)
{
    for (std::size_t at = iText.find('\r'); at != std::string_view::npos;
         at = iText.find('\r', at + 1))
        if (at + 1 == iText.size() || iText[at + 1] != '\n')
            return true;
    return false;
}

} // namespace

TomlBytes TomlBytes::Look(std::string_view iText)
{
    const ByteKinds kinds = LookAtBytes(iText);
    const std::size_t illFormed = kinds.high ? FindIllFormed(iText) : std::string_view::npos;
    return {illFormed, illFormed == std::string_view::npos && !kinds.control &&
                           !(kinds.carriageReturn && HasLoneCarriageReturn(iText))};
}
