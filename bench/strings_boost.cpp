#include "strings_rows.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/split.hpp>

#include <algorithm>
#include <vector>

namespace
{

struct WithBoost {
    using Text = std::string;

    static std::vector<std::string> Words(const Text& iText)
    {
        std::vector<std::string> words;
        boost::split(words, iText, boost::is_any_of(" "), boost::token_compress_on);
        return words;
    }
    static std::string Word(const Text& iText, std::size_t iNumber)
    {
        return Words(iText)[iNumber - 1];
    }
    static std::string Joined(const Text& iText, std::size_t iCount)
    {
        std::vector<std::string> words = Words(iText);
        words.resize(std::min(iCount, words.size()));
        return boost::join(words, " ");
    }
    static long Position(const Text& iWord, const Text& iText)
    {
        const std::vector<std::string> words = Words(iText);
        return std::find(words.begin(), words.end(), iWord) - words.begin() + 1;
    }
};

const Rows kRows([] { StringRows<WithBoost>("Boost"); });

} // namespace
