#include "strings_rows.h"

#include <absl/strings/str_join.h>
#include <absl/strings/str_split.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace
{

struct WithStrSplit {
    using Text = std::string;

    static std::vector<absl::string_view> Words(const Text& iText)
    {
        return absl::StrSplit(iText, ' ', absl::SkipEmpty());
    }
    static std::string Word(const Text& iText, std::size_t iNumber)
    {
        // Without a list of them all.
        for (const absl::string_view word : absl::StrSplit(iText, ' ', absl::SkipEmpty()))
            if (--iNumber == 0)
                return std::string(word);
        return {};
    }
    static std::string Joined(const Text& iText, std::size_t iCount)
    {
        const auto words = Words(iText);
        const auto count = static_cast<std::ptrdiff_t>(std::min(iCount, words.size()));
        return absl::StrJoin(words.begin(), words.begin() + count, " ");
    }
    static long Position(const Text& iWord, const Text& iText)
    {
        long number = 1;
        for (const absl::string_view word : absl::StrSplit(iText, ' ', absl::SkipEmpty())) {
            if (word == iWord)
                return number;
            ++number;
        }
        return 0;
    }
};

const Rows kRows([] { StringRows<WithStrSplit>("absl::StrSplit"); });

} // namespace
