#include "StrippedPart.h"

#include <algorithm>

std::string_view StrippedPart(std::string_view iText, char iMode, char iCharacter)
{
    if (iMode == 'L' || iMode == 'B') {
        const auto leading = std::min(iText.find_first_not_of(iCharacter), iText.size());
        // Callers rely on trailing characters staying when leading ones were removed in mode 'B'.
        if (iMode == 'L' || leading > 0)
            return iText.substr(leading);
    }
    const auto last = iText.find_last_not_of(iCharacter);
    return iText.substr(0, last == std::string_view::npos ? 0 : last + 1);
}
