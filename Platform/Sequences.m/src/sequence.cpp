#include "sequence.h"

#include "RaiseWithText.h"
#include "ZORInternalError.h"

#include <cctype>
#include <string>

namespace
{

// The format with "%name" replaced by "name=" and the next number; a fifth name stands alone.
std::string Expand(const char* iFormat, const int (&iNumbers)[4])
{
    std::string text;
    const int* number = iNumbers;
    for (const char* each = iFormat; *each;) {
        if (*each != '%') {
            text += *each++;
            continue;
        }
        for (++each; std::isalpha(static_cast<unsigned char>(*each)); ++each)
            text += *each;
        if (number != std::end(iNumbers))
            text += '=' + std::to_string(*number++);
    }
    return text;
}

} // namespace

void sequence::boucle(const void* iSource, int iCount)
{
    for (int i = 0; i < iCount; ++i)
        Assignation(iSource, i);
}

void sequence::exit(const char* iFormat, int iFirst, int iSecond, int iThird, int iFourth) const
{
    const std::string text =
        "index out of range: " + Expand(iFormat, {iFirst, iSecond, iThird, iFourth});
    RaiseWithText<ZORInternalError>(text, "Platform/Sequences.m/src/sequence", __LINE__);
}

void sequence::Assignation(const void*, int) {}
