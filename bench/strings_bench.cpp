// The word functions beside what a user would pick instead and beside the least a machine must do:
// one pass over the bytes with vectors, and one allocation. A row whose result differs is an error.
#include "ZORDuxStrings.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace
{
struct FreeText {
    void operator()(char* iText) const { std::free(iText); }
};
using NewText = std::unique_ptr<char, FreeText>;

// "plate17 bracket4 …", words of three to twelve characters with single blanks between them.
std::string MakeText(std::size_t iWords)
{
    static constexpr std::string_view kStems[] = {"nut", "bolt", "plate", "bracket", "crankcase"};
    std::string text;
    for (std::size_t number = 0; number < iWords; ++number) {
        text += kStems[number * 7 % 5];
        text += std::to_string(number % 1000) + ' ';
    }
    text.pop_back();
    return text;
}

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

void Check(benchmark::State& ioState, bool iSame)
{
    if (!iSame)
        ioState.SkipWithError("another result");
}

// A text in storage that may be read 32 bytes beyond its end, as the rows by hand do.
struct Text {
    explicit Text(std::size_t iWords) : string(MakeText(iWords))
    {
        string.reserve(string.size() + 64);
    }
    std::string string;
};

template <class Function>
void RunWord(benchmark::State& ioState, Function iFunction, std::size_t iNumber)
{
    const Text text(static_cast<std::size_t>(ioState.range(0)));
    const std::string expected(ViewWord(text.string, iNumber));
    for (auto _ : ioState) {
        const NewText result(iFunction(text.string, iNumber));
        benchmark::DoNotOptimize(result.get());
    }
    const NewText result(iFunction(text.string, iNumber));
    Check(ioState, expected == result.get());
    ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(text.string.size()));
}

template <class Function>
void Nth(benchmark::State& ioState, Function iFunction)
{
    RunWord(ioState, iFunction, static_cast<std::size_t>(ioState.range(0)) / 2);
}
template <class Function>
void Last(benchmark::State& ioState, Function iFunction)
{
    RunWord(ioState, iFunction, static_cast<std::size_t>(ioState.range(0)));
}

template <class Function>
void Position(benchmark::State& ioState, Function iFunction)
{
    const Text text(static_cast<std::size_t>(ioState.range(0)) - 1);
    const std::string whole = text.string + " bolt-last";
    Text last(1);
    last.string = whole;
    last.string.reserve(whole.size() + 64);
    int found = 0;
    for (auto _ : ioState)
        benchmark::DoNotOptimize(found = iFunction(std::string_view("bolt-last"), last.string));
    Check(ioState, found == ioState.range(0));
}

template <class Function>
void Joined(benchmark::State& ioState, Function iFunction)
{
    const Text text(static_cast<std::size_t>(ioState.range(0)));
    for (auto _ : ioState) {
        const NewText result(iFunction(text.string, static_cast<std::size_t>(ioState.range(0))));
        benchmark::DoNotOptimize(result.get());
    }
    const NewText result(iFunction(text.string, static_cast<std::size_t>(ioState.range(0))));
    Check(ioState, text.string == result.get());
}

using std::size_t;
using std::string;
using std::string_view;

#define ROWS(kind, peer, ...)                                                                      \
    BENCHMARK_CAPTURE(kind, peer, __VA_ARGS__)->Arg(10)->Arg(100)->Arg(10000)

const auto ourWord = [](const string& t, size_t n) {
    return word(t.c_str(), static_cast<unsigned>(n));
};
const auto viewWord = [](const string& t, size_t n) { return NewCopy(ViewWord(t, n)); };
const auto tokenWord = [](const string& t, size_t n) { return TokenWord(t, n); };

ROWS(Nth, ours, ourWord);
ROWS(Nth, views, viewWord);
ROWS(Nth, strtok_r, tokenWord);
ROWS(Last, ours, ourWord);
ROWS(Last, views, viewWord);
ROWS(Last, strtok_r, tokenWord);
ROWS(Position, ours,
     [](string_view w, const string& t) { return wordpos(w.data(), t.c_str(), 1); });
ROWS(Position, views, [](string_view w, const string& t) { return ViewPosition(w, t); });
ROWS(Position, strtok_r, [](string_view w, const string& t) { return TokenPosition(w.data(), t); });
ROWS(Joined, ours,
     [](const string& t, size_t n) { return subword(t.c_str(), 1, static_cast<unsigned>(n)); });
ROWS(Joined, views, [](const string& t, size_t n) { return ViewJoined(t, n); });
ROWS(Joined, strtok_r, [](const string& t, size_t n) { return TokenJoined(t, n); });

#ifdef __SSE2__
const auto handWord = [](const string& t, size_t n) {
    return HandWord(t.c_str(), static_cast<int>(n));
};
ROWS(Nth, reference, handWord);
ROWS(Last, reference, handWord);
ROWS(Position, reference,
     [](string_view w, const string& t) { return HandPosition(w, t.c_str()); });
ROWS(Joined, reference, [](const string& t, size_t) { return HandJoined(t.c_str(), t.size()); });
#endif
} // namespace

BENCHMARK_MAIN();
