#pragma once

// The rows of each way to take words out of a text. A way is a class:
//
//     struct Way {
//         using Text = …;                                           made from a const char*
//         static auto Word(const Text& iText, std::size_t iNumber);
//         static auto Joined(const Text& iText, std::size_t iCount);       the first words
//         static long Position(const Text& iWord, const Text& iText);      from 1
//     };

#include "support/Rows.h"

#include <string>
#include <string_view>

// "plate17 bracket4 …", words of three to twelve characters with single blanks between them.
inline std::string MakeText(std::size_t iWords)
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

template <class Way>
void StringRows(const std::string& iWho)
{
    using Text = typename Way::Text;
    for (const std::size_t count : {10U, 100U, 10000U}) {
        const auto row = [&](const char* iCase, auto iRun) {
            Row(iCase, static_cast<long>(count), iWho, [=](benchmark::State& ioState) {
                const std::string words = MakeText(count - 1) + " bolt-last";
                iRun(ioState, words, Text(words.c_str()));
            });
        };
        // The number of the words, and what it is.
        const auto word = [](std::size_t iNumber) {
            return [=](benchmark::State& ioState, const std::string& iWords, const Text& iText) {
                for ([[maybe_unused]] auto each : ioState)
                    benchmark::DoNotOptimize(Way::Word(iText, iNumber));
                std::size_t begin = 0;
                for (std::size_t i = 1; i < iNumber; ++i)
                    begin = iWords.find(' ', begin) + 1;
                const std::string expected = iWords.substr(begin, iWords.find(' ', begin) - begin);
                Check(ioState, Way::Word(iText, iNumber) == Text(expected.c_str()));
            };
        };
        row("nth", word(count / 2));
        row("last", word(count));
        row("position", [=](benchmark::State& ioState, const std::string&, const Text& iText) {
            const Text last("bolt-last");
            for ([[maybe_unused]] auto each : ioState)
                benchmark::DoNotOptimize(Way::Position(last, iText));
            Check(ioState, Way::Position(last, iText) == static_cast<long>(count));
        });
        row("joined", [=](benchmark::State& ioState, const std::string&, const Text& iText) {
            for ([[maybe_unused]] auto each : ioState)
                benchmark::DoNotOptimize(Way::Joined(iText, count));
            Check(ioState, Way::Joined(iText, count) == iText);
        });
    }
}
