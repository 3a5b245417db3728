// The word functions beside what a user would pick instead and beside the least a machine must do:
// one pass over the bytes with vectors, and one allocation. A row whose result differs is an error.

#include "ZORDuxStrings.h"
#include "strings_rows.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace
{

// A text in storage that may be read 32 bytes beyond its end, as the rows by hand do.
struct PaddedText : std::string {
    PaddedText(const char* iText) : std::string(iText) { reserve(size() + 64); }
    PaddedText(const PaddedText& iOther) : PaddedText(iOther.c_str()) {}
};

// A text from malloc.
class NewText
{
public:
    explicit NewText(char* iText) : _Text(iText) {}
    ~NewText() { std::free(_Text); }
    NewText(const NewText&) = delete;
    NewText& operator=(const NewText&) = delete;
    char* get() const { return _Text; }
    friend bool operator==(const NewText& iLeft, const std::string& iRight)
    {
        return iLeft._Text == iRight;
    }

private:
    char* _Text;
};

char* NewCopy(std::string_view iText)
{
    char* const copy = static_cast<char*>(std::malloc(iText.size() + 1));
    std::memcpy(copy, iText.data(), iText.size());
    copy[iText.size()] = '\0';
    return copy;
}

// ---- What a user would write with views

std::string_view ViewWord(std::string_view iText, std::size_t iNumber)
{
    for (std::size_t at = 0;;) {
        at = iText.find_first_not_of(' ', at);
        if (at == std::string_view::npos)
            return {};
        const std::size_t end = std::min(iText.find(' ', at), iText.size());
        if (--iNumber == 0)
            return iText.substr(at, end - at);
        at = end;
    }
}

int ViewPosition(std::string_view iWord, std::string_view iText)
{
    int number = 0;
    for (std::size_t at = 0;;) {
        at = iText.find_first_not_of(' ', at);
        if (at == std::string_view::npos)
            return 0;
        const std::size_t end = std::min(iText.find(' ', at), iText.size());
        ++number;
        if (iText.substr(at, end - at) == iWord)
            return number;
        at = end;
    }
}

char* ViewJoined(std::string_view iText, std::size_t iCount)
{
    std::string joined;
    for (std::size_t at = 0; iCount > 0; --iCount) {
        at = iText.find_first_not_of(' ', at);
        if (at == std::string_view::npos)
            break;
        const std::size_t end = std::min(iText.find(' ', at), iText.size());
        if (!joined.empty())
            joined += ' ';
        joined += iText.substr(at, end - at);
        at = end;
    }
    return NewCopy(joined);
}

// ---- The same with the C library's tokeniser, on a copy

char* TokenWord(const std::string& iText, std::size_t iNumber)
{
    const NewText copy(NewCopy(iText));
    char* state = nullptr;
    char* token = strtok_r(copy.get(), " ", &state);
    while (token && --iNumber > 0)
        token = strtok_r(nullptr, " ", &state);
    return token ? NewCopy(token) : nullptr;
}

int TokenPosition(const char* iWord, const std::string& iText)
{
    const NewText copy(NewCopy(iText));
    char* state = nullptr;
    int number = 1;
    for (char* token = strtok_r(copy.get(), " ", &state); token;
         token = strtok_r(nullptr, " ", &state), ++number)
        if (std::strcmp(token, iWord) == 0)
            return number;
    return 0;
}

char* TokenJoined(const std::string& iText, std::size_t iCount)
{
    const NewText copy(NewCopy(iText));
    char* const joined = static_cast<char*>(std::malloc(iText.size() + 1));
    char* out = joined;
    char* state = nullptr;
    for (char* token = strtok_r(copy.get(), " ", &state); token && iCount > 0;
         token = strtok_r(nullptr, " ", &state), --iCount) {
        if (out != joined)
            *out++ = ' ';
        out = stpcpy(out, token);
    }
    *out = '\0';
    return joined;
}

// ---- By hand: 16 bytes at a time from the text's beginning, of which storage there is enough

#ifdef __SSE2__
struct Bytes {
    unsigned separators;
    unsigned ends;
    explicit Bytes(const char* iAt)
    {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(iAt));
        separators = Mask(bytes, ' ');
        ends = Mask(bytes, '\0');
    }
    static unsigned Mask(__m128i iBytes, char iCharacter)
    {
        return static_cast<unsigned>(
            _mm_movemask_epi8(_mm_cmpeq_epi8(iBytes, _mm_set1_epi8(iCharacter))));
    }
};

char* HandWord(const char* iText, int iNumber)
{
    unsigned separatorBefore = 1;
    for (const char* at = iText;; at += 16) {
        const Bytes bytes(at);
        unsigned starts = ~bytes.separators & (bytes.separators << 1 | separatorBefore) & 0xffff;
        if (bytes.ends)
            starts &= (bytes.ends & -bytes.ends) - 1;
        const int count = std::popcount(starts);
        if (iNumber <= count) {
            while (--iNumber > 0)
                starts &= starts - 1;
            const char* const begin = at + std::countr_zero(starts);
            const char* end = begin;
            while (*end != ' ' && *end)
                ++end;
            return NewCopy({begin, static_cast<std::size_t>(end - begin)});
        }
        if (bytes.ends)
            return nullptr;
        iNumber -= count;
        separatorBefore = bytes.separators >> 15;
    }
}

int HandPosition(std::string_view iWord, const char* iText)
{
    unsigned separatorBefore = 1;
    int number = 0;
    for (const char* at = iText;; at += 16) {
        const Bytes bytes(at);
        unsigned starts = ~bytes.separators & (bytes.separators << 1 | separatorBefore) & 0xffff;
        if (bytes.ends)
            starts &= (bytes.ends & -bytes.ends) - 1;
        const unsigned same =
            Bytes::Mask(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at)), iWord[0]);
        for (unsigned found = starts & same; found; found &= found - 1) {
            const int bit = std::countr_zero(found);
            const char* const begin = at + bit;
            const char behind = begin[iWord.size()];
            if (std::memcmp(begin, iWord.data(), iWord.size()) == 0 && (behind == ' ' || !behind))
                return number + 1 + std::popcount(starts & ((1U << bit) - 1));
        }
        if (bytes.ends)
            return 0;
        number += std::popcount(starts);
        separatorBefore = bytes.separators >> 15;
    }
}

// Copies as it goes; a byte that does not follow a separator or is none goes to its place.
char* HandJoined(const char* iText, std::size_t iSize)
{
    char* const joined = static_cast<char*>(std::malloc(iSize + 32));
    char* out = joined;
    unsigned separatorBefore = 1;
    for (const char* at = iText;; at += 16) {
        const Bytes bytes(at);
        const unsigned dropped = bytes.separators & (bytes.separators << 1 | separatorBefore);
        if (dropped || bytes.ends) {
            for (int i = 0; i < 16 && at[i]; ++i)
                if (!(dropped >> i & 1))
                    *out++ = at[i];
            if (bytes.ends)
                break;
        } else {
            std::memcpy(out, at, 16);
            out += 16;
        }
        separatorBefore = bytes.separators >> 15;
    }
    if (out != joined && out[-1] == ' ')
        --out;
    *out = '\0';
    return joined;
}
#endif

// ---- Rows

struct Ours {
    using Text = PaddedText;
    static NewText Word(const Text& iText, std::size_t iNumber)
    {
        return NewText(word(iText.c_str(), static_cast<unsigned>(iNumber)));
    }
    static NewText Joined(const Text& iText, std::size_t iCount)
    {
        return NewText(subword(iText.c_str(), 1, static_cast<unsigned>(iCount)));
    }
    static long Position(const Text& iWord, const Text& iText)
    {
        return wordpos(iWord.c_str(), iText.c_str(), 1);
    }
};

#ifdef __SSE2__
struct Reference {
    using Text = PaddedText;
    static NewText Word(const Text& iText, std::size_t iNumber)
    {
        return NewText(HandWord(iText.c_str(), static_cast<int>(iNumber)));
    }
    static NewText Joined(const Text& iText, std::size_t)
    {
        return NewText(HandJoined(iText.c_str(), iText.size()));
    }
    static long Position(const Text& iWord, const Text& iText)
    {
        return HandPosition(iWord, iText.c_str());
    }
};
#endif

struct WithViews {
    using Text = PaddedText;
    static NewText Word(const Text& iText, std::size_t iNumber)
    {
        return NewText(NewCopy(ViewWord(iText, iNumber)));
    }
    static NewText Joined(const Text& iText, std::size_t iCount)
    {
        return NewText(ViewJoined(iText, iCount));
    }
    static long Position(const Text& iWord, const Text& iText)
    {
        return ViewPosition(iWord, iText);
    }
};

struct WithTokens {
    using Text = PaddedText;
    static NewText Word(const Text& iText, std::size_t iNumber)
    {
        return NewText(TokenWord(iText, iNumber));
    }
    static NewText Joined(const Text& iText, std::size_t iCount)
    {
        return NewText(TokenJoined(iText, iCount));
    }
    static long Position(const Text& iWord, const Text& iText)
    {
        return TokenPosition(iWord.c_str(), iText);
    }
};

const Rows kRows([] {
    StringRows<Ours>("ours");
#ifdef __SSE2__
    StringRows<Reference>("reference");
#endif
    StringRows<WithViews>("string_view");
    StringRows<WithTokens>("strtok_r");
});

} // namespace
