#include "FindWord.h"

#include "WordBlocks.h"

#include <algorithm>

namespace
{
// The end of the word that begins in the block at bit `iStart`, or iLongest bytes from there.
const char* EndOfWord(WordBlocks& ioBlocks, int iStart, std::ptrdiff_t iLongest)
{
    const char* const begin = ioBlocks.Address() + iStart;
    const auto length = [&](std::size_t iBit) { return ioBlocks.Address() + iBit - begin; };
    // A word that does not end before the last block ends in it, at the terminator if not before.
    WordBlocks::Mask ends = ioBlocks.Ends() & ~WordBlocks::Mask(0) << iStart;
    while (!ends && length(WordBlocks::kSize) < iLongest) {
        ioBlocks.Next();
        ends = ioBlocks.Ends();
    }
    return begin + std::min(length(static_cast<std::size_t>(std::countr_zero(ends))), iLongest);
}
} // namespace

WordRange FindWord(const char* iText, std::size_t iNumber, char iSeparator, std::ptrdiff_t iLongest)
{
    for (WordBlocks blocks(iText, iSeparator);; blocks.Next()) {
        const WordBlocks::Mask starts = blocks.Starts();
        const std::size_t count = WordBlocks::Count(starts);
        if (iNumber <= count) {
            const int start = WordBlocks::Place(starts, iNumber);
            const char* const begin = blocks.Address() + start;
            return {begin, EndOfWord(blocks, start, iLongest)};
        }
        if (blocks.IsLast())
            return {nullptr, blocks.Terminator()};
        iNumber -= count;
    }
}
