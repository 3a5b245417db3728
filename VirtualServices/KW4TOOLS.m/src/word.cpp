#include "ZORDuxStrings.h"

#include "FindWord.h"
#include "NewString.h"

#include <cstring>

namespace
{
// With the NUL behind it, the separator's address is a string of one character.
char separator[2] = " ";
char previousSeparator = ' ';

char wordBuffer[256];
} // namespace

char getwsep(int iWhich)
{
    return iWhich < 0 ? previousSeparator : separator[0];
}

const char* setwsep(char iSeparator)
{
    previousSeparator = separator[0];
    separator[0] = iSeparator;
    return separator;
}

char* word(const char* iText, unsigned iNumber)
{
    if (!iText || !*iText || iNumber == 0)
        return nullptr;
    const WordRange found = FindWord(iText, iNumber, separator[0]);
    const char* const begin = found ? found.begin : iText;
    const std::string_view copied(begin, static_cast<std::size_t>(found.end - begin));
    char* const copy = NewString(copied, copied.size());
    if (found)
        return copy;
    // No such word: the copy of the whole text is kept on purpose, as callers are told. The empty
    // statement makes the compiler believe that it is used.
    asm volatile("" : : "r"(copy) : "memory");
    return nullptr; // NOLINT(clang-analyzer-unix.Malloc)
}

char* xword(const char* iText, unsigned iNumber)
{
    if (!iText || iNumber == 0)
        return nullptr;
    constexpr std::ptrdiff_t kLongest = sizeof(wordBuffer) - 1;
    const WordRange found =
        *iText ? FindWord(iText, iNumber, separator[0], kLongest) : WordRange{iText, iText};
    if (!found)
        return nullptr;
    const auto size = static_cast<std::size_t>(found.end - found.begin);
    std::memmove(wordBuffer, found.begin, size); // the text may lie in the buffer
    wordBuffer[size] = '\0';
    return wordBuffer;
}
