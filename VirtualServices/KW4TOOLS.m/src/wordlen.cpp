#include "ZORDuxStrings.h"

#include "FindWord.h"

int wordlen(const char* iText, int iNumber)
{
    if (iNumber == 0)
        return -1;
    if (!iText || iNumber < 0)
        return 0;
    const WordRange found = FindWord(iText, static_cast<std::size_t>(iNumber), getwsep(0));
    return found ? static_cast<int>(found.end - found.begin) : 0;
}
