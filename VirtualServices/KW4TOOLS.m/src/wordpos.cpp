#include "ZORDuxStrings.h"

#include "StrippedPart.h"
#include "WordBlocks.h"

#include <cstring>

namespace
{
bool IsWord(std::string_view iWord, const char* iStart, char iSeparator)
{
    // Not memcmp: the text may end before.
    if (std::strncmp(iStart, iWord.data(), iWord.size()) != 0)
        return false;
    const char behind = iStart[iWord.size()];
    return behind == iSeparator || behind == '\0';
}

using Mask = WordBlocks::Mask;

// The places in a block with the end of a word so many bytes behind them, or perhaps in a later
// block.
Mask MayBeAsLong(Mask iEnds, std::size_t iLength)
{
    if (iLength >= WordBlocks::kSize)
        return ~Mask(0);
    return iEnds >> iLength | ~Mask(0) << (WordBlocks::kSize - iLength);
}

// The number of the first word, from word `iStart` on, that is `iWord`; 0 when there is none.
std::size_t Search(std::string_view iWord, const char* iText, std::size_t iStart, char iSeparator)
{
    std::size_t before = 0; // words that begin in the blocks before
    for (WordBlocks blocks(iText, iSeparator);; blocks.Next()) {
        const Mask starts = blocks.Starts();
        const std::size_t upTo = before + WordBlocks::Count(starts);
        Mask candidates = starts & MayBeAsLong(blocks.Ends(), iWord.size());
        if (candidates && upTo >= iStart)
            candidates &= blocks.WordBytesEqualTo(iWord.front());
        else
            candidates = 0;
        for (; candidates; candidates &= candidates - 1) {
            const auto bit = std::countr_zero(candidates);
            if (!IsWord(iWord, blocks.Address() + bit, iSeparator))
                continue;
            const std::size_t number = before + 1 + WordBlocks::Count(starts & ~(~Mask(0) << bit));
            if (number >= iStart)
                return number;
        }
        if (blocks.IsLast())
            return 0;
        before = upTo;
    }
}
} // namespace

int wordpos(const char* iPhrase, const char* iText, unsigned iStart)
{
    if (iStart == 0)
        return -1;
    if (!iPhrase || !iText)
        return 0;
    const char separator = getwsep(0);
    const std::string_view wanted = StrippedPart(iPhrase, 'B', separator);
    // No word is empty or holds a separator.
    if (wanted.empty() || wanted.find(separator) != std::string_view::npos)
        return 0;
    return static_cast<int>(Search(wanted, iText, iStart, separator));
}
