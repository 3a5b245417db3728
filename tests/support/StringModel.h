#pragma once

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <vector>

// The rules of ZORDuxStrings.h written down as plainly as they can be, without a thought for speed:
// what the functions are compared with. No value stands for a null result.
namespace model
{
using Text = std::optional<std::string>;

inline Text Left(const std::string& iText, unsigned iCount)
{
    if (iCount == 0 || iCount > iText.size())
        return {};
    return iText.substr(0, iCount);
}

inline Text Right(const std::string& iText, unsigned iCount)
{
    if (iCount == 0 || iCount > iText.size())
        return {};
    return iText.substr(iText.size() - iCount);
}

inline Text SubStr(const std::string& iText, unsigned iStart, unsigned iCount)
{
    const auto last = static_cast<unsigned long long>(iStart) + iCount - 1;
    if (iStart == 0 || iCount == 0 || last > iText.size())
        return {};
    return iText.substr(iStart - 1, iCount);
}

inline Text Insert(const std::string& iWhat, const std::string& iInto, unsigned iAfter)
{
    if (iAfter > iInto.size())
        return {};
    return iInto.substr(0, iAfter) + iWhat + iInto.substr(iAfter);
}

inline Text Overly(const std::string& iWhat, const std::string& iTarget, unsigned iAt)
{
    if (iAt == 0 || iAt > iTarget.size())
        return {};
    std::string result = iTarget;
    for (std::size_t i = 0; i < iWhat.size(); ++i) {
        if (iAt - 1 + i == result.size())
            result += ' ';
        result[iAt - 1 + i] = iWhat[i];
    }
    return result;
}

inline Text Pad(const std::string& iText, unsigned iCount, char iFill)
{
    if (iCount < iText.size())
        return {};
    std::string result = iText;
    while (result.size() < iCount)
        result += iFill;
    return result.substr(0, result.find('\0'));
}

inline std::string Strip(const std::string& iText, const std::string& iMode,
                         const std::string& iCharacter)
{
    const char mode = iMode.empty() ? '\0' : iMode[0];
    if (iCharacter.empty())
        return iText;
    std::string result = iText;
    bool removed = false;
    while ((mode == 'L' || mode == 'B') && !result.empty() && result.front() == iCharacter[0]) {
        result.erase(0, 1);
        removed = true;
    }
    while (mode != 'L' && !removed && !result.empty() && result.back() == iCharacter[0])
        result.pop_back();
    return result;
}

struct Swapped {
    unsigned count;
    std::string text;
    bool operator==(const Swapped&) const = default;
};

inline Swapped CSwap(char iFrom, char iTo, const std::string& iText, unsigned iStart)
{
    Swapped result{0, iText};
    for (std::size_t i = 0; i < iText.size(); ++i)
        if (iStart != 0 && i + 1 >= iStart && iText[i] == iFrom) {
            result.text[i] = iTo;
            ++result.count;
        }
    result.text.resize(std::min(result.text.find('\0'), result.text.size()));
    return result;
}

inline std::string Lower(std::string iText)
{
    for (char& c : iText)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return iText;
}

inline std::string Upper(std::string iText)
{
    for (char& c : iText)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return iText;
}

inline std::string QStrip(std::string iText)
{
    while (!iText.empty() && iText.front() == ' ')
        iText.erase(0, 1);
    while (!iText.empty() && iText.back() == ' ')
        iText.pop_back();
    return iText;
}

inline int Pos(const std::string& iNeedle, const std::string& iHay, unsigned iStart)
{
    if (iStart == 0)
        return -1;
    for (std::size_t at = iStart; !iNeedle.empty() && at - 1 + iNeedle.size() <= iHay.size(); ++at)
        if (iHay.compare(at - 1, iNeedle.size(), iNeedle) == 0)
            return static_cast<int>(at);
    return 0;
}

inline std::vector<std::string> Words(const std::string& iText, char iSeparator)
{
    std::vector<std::string> words(1);
    for (const char c : iText)
        if (c == iSeparator)
            words.emplace_back();
        else
            words.back() += c;
    std::erase(words, "");
    return words;
}

inline Text Word(const std::string& iText, unsigned iNumber, char iSeparator)
{
    const auto words = Words(iText, iSeparator);
    if (iNumber == 0 || iNumber > words.size())
        return {};
    return words[iNumber - 1];
}

inline Text XWord(const std::string& iText, unsigned iNumber, char iSeparator)
{
    if (iNumber != 0 && iText.empty())
        return "";
    const Text word = Word(iText, iNumber, iSeparator);
    return word ? word->substr(0, 255) : word;
}

inline int WordLen(const std::string& iText, int iNumber, char iSeparator)
{
    if (iNumber == 0)
        return -1;
    const Text word =
        iNumber < 0 ? Text() : Word(iText, static_cast<unsigned>(iNumber), iSeparator);
    return word ? static_cast<int>(word->size()) : 0;
}

inline Text SubWord(const std::string& iText, unsigned iFirst, unsigned iCount, char iSeparator)
{
    const auto words = Words(iText, iSeparator);
    if (iFirst == 0 || iCount == 0 || iFirst > words.size())
        return {};
    std::string result = words[iFirst - 1];
    const unsigned last = iFirst + iCount - 1; // may wrap around
    for (std::size_t number = iFirst + 1U; number <= last && number <= words.size(); ++number)
        result += iSeparator + words[number - 1];
    return result;
}

inline int WordPos(const std::string& iPhrase, const std::string& iText, unsigned iStart,
                   char iSeparator)
{
    if (iStart == 0)
        return -1;
    const std::string separator = iSeparator ? std::string(1, iSeparator) : "";
    const std::string wanted = Strip(iPhrase, "B", separator);
    const auto words = Words(iText, iSeparator);
    for (std::size_t number = iStart; number <= words.size(); ++number)
        if (words[number - 1] == wanted)
            return static_cast<int>(number);
    return 0;
}
} // namespace model
