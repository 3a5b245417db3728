#include "ZORDuxStrings.h"

#include "WordBlocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace
{
using Mask = WordBlocks::Mask;

// Writes the bytes of the block that the mask names and returns the end of what it wrote.
char* CopyBytes(char* oBytes, const char* iBlock, Mask iNamed)
{
    if (iNamed == ~Mask(0)) {
        std::memcpy(oBytes, iBlock, WordBlocks::kSize);
        return oBytes + WordBlocks::kSize;
    }
    while (iNamed) {
        const int begin = std::countr_zero(iNamed);
        const int size = std::countr_one(iNamed >> begin);
        oBytes = std::copy_n(iBlock + begin, size, oBytes);
        iNamed &= ~Mask(0) << (begin + size - 1) << 1; // at once it could be a shift by 64
    }
    return oBytes;
}

// Writes up to `iCount` words of the text from word `iFirst` on, each with the byte behind it, be
// it the separator or the terminator, and returns the end of what it wrote; null when there is no
// word `iFirst`.
char* CopyWords(char* oWords, const char* iText, std::size_t iFirst, std::size_t iCount,
                char iSeparator)
{
    WordBlocks blocks(iText, iSeparator);
    for (std::size_t count; (count = WordBlocks::Count(blocks.Starts())) < iFirst; blocks.Next()) {
        if (blocks.IsLast())
            return nullptr;
        iFirst -= count;
    }
    Mask wanted = ~Mask(0) << WordBlocks::Place(blocks.Starts(), iFirst);
    for (;; blocks.Next(), wanted = ~Mask(0)) {
        const Mask ends = blocks.Ends() & wanted;
        const std::size_t count = WordBlocks::Count(ends);
        if (iCount <= count)
            wanted &= ~(~Mask(1) << WordBlocks::Place(ends, iCount));
        oWords = CopyBytes(oWords, blocks.Address(), (blocks.Words() | ends) & wanted);
        if (iCount <= count || blocks.IsLast())
            return oWords;
        iCount -= count;
    }
}
} // namespace

char* subword(const char* iText, unsigned iFirst, unsigned iCount)
{
    if (!iText || iFirst == 0 || iCount == 0)
        return nullptr;
    char* const result = static_cast<char*>(std::malloc(std::strlen(iText) + 1));
    if (!result)
        return nullptr;
    const unsigned last = iFirst + iCount - 1;
    const std::size_t count = last < iFirst ? 1 : last - iFirst + std::size_t(1);
    char* const end = CopyWords(result, iText, iFirst, count, getwsep(0));
    if (!end) {
        std::free(result);
        return nullptr;
    }
    end[-1] = '\0';
    return result;
}
