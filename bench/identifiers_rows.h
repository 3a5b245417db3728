#pragma once

// The rows of each way to work on lists of identifiers. A way is a class:
//
//     struct Way {
//         using List = …;
//         static List Make(const Octets& iOctets);
//         static std::size_t Size(const List& iList);
//         static auto Intersect(List& iFirst, List& iSecond);    those of the first list that are,
//         static auto Subtract(List& iFirst, List& iSecond);     or are not, in the second
//         static void Unique(List& ioList);                      the last of equal ones stays
//     };

#include "support/Rows.h"

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

using Octets = std::vector<std::string>;

// Half of the second list stands in the first; of `twice` each identifier stands there twice.
struct Identifiers {
    Octets first, second, twice;
    std::size_t common, distinct;

    Identifiers(std::size_t iCount, std::size_t iOctets)
    {
        std::mt19937_64 random(iCount * 64 + iOctets);
        const auto identifier = [&] {
            std::string octets(iOctets, '\0');
            for (char& each : octets)
                each = static_cast<char>(random());
            return octets;
        };
        for (std::size_t i = 0; i < iCount; ++i) {
            first.push_back(identifier());
            second.push_back(i % 2 ? identifier() : first.back());
            twice.push_back(first[i / 2]);
        }
        std::shuffle(second.begin(), second.end(), random);
        std::shuffle(twice.begin(), twice.end(), random);
        const std::unordered_set<std::string> inSecond(second.begin(), second.end());
        common = static_cast<std::size_t>(std::count_if(
            first.begin(), first.end(), [&](auto& each) { return inSecond.count(each) != 0; }));
        distinct = std::unordered_set<std::string>(twice.begin(), twice.end()).size();
    }

    static const Identifiers& Of(int iCount, int iOctets)
    {
        static std::map<std::pair<int, int>, Identifiers> made;
        return made
            .try_emplace({iCount, iOctets}, static_cast<std::size_t>(iCount),
                         static_cast<std::size_t>(iOctets))
            .first->second;
    }
};

template <class Way, class Select>
void SelectRow(benchmark::State& ioState, const Identifiers& iLists, Select iSelect,
               std::size_t iExpected)
{
    auto first = Way::Make(iLists.first);
    auto second = Way::Make(iLists.second);
    for ([[maybe_unused]] auto each : ioState) {
        auto selected = iSelect(first, second);
        benchmark::DoNotOptimize(&selected);
    }
    Check(ioState, Way::Size(iSelect(first, second)) == iExpected);
}

// Times the removal alone: it is done to copies of the list that are made beforehand.
template <class Way>
void UniqueRow(benchmark::State& ioState, const Identifiers& iLists)
{
    const auto list = Way::Make(iLists.twice);
    const std::size_t copies = std::max<std::size_t>(1, 1000 / iLists.twice.size());
    std::size_t length = 0;
    while (ioState.KeepRunningBatch(static_cast<benchmark::IterationCount>(copies))) {
        std::vector<typename Way::List> lists(copies, list);
        const double start = ProcessorTime();
        for (auto& each : lists)
            Way::Unique(each);
        ioState.SetIterationTime(ProcessorTime() - start);
        length = Way::Size(lists.front());
    }
    Check(ioState, length == iLists.distinct);
}

template <class Way>
void IdentifierRows(const std::string& iWho)
{
    for (const int octets : {16, 36})
        for (const int count : {10, 100, 1000, 10000, 100000}) {
            const auto row = [&](const char* iCase, auto iRun) {
                return Row(iCase + ('/' + std::to_string(octets)), count, iWho, iRun);
            };
            const auto lists = [=]() -> const Identifiers& {
                return Identifiers::Of(count, octets);
            };
            row("intersect", [=](benchmark::State& ioState) {
                SelectRow<Way>(ioState, lists(), Way::Intersect, lists().common);
            });
            row("subtract", [=](benchmark::State& ioState) {
                SelectRow<Way>(ioState, lists(), Way::Subtract,
                               lists().first.size() - lists().common);
            });
            row("unique", [=](benchmark::State& ioState) {
                UniqueRow<Way>(ioState, lists());
            })->UseManualTime();
        }
}

// What one would write with a set of some kind, and lists of its elements.
template <class Set, class Elements>
struct WithSet {
    using List = Elements;
    using Element = typename Elements::value_type;

    static List Make(const Octets& iOctets)
    {
        List list;
        for (const std::string& each : iOctets)
            list.push_back(Element(each.data(), static_cast<int>(each.size())));
        return list;
    }
    static std::size_t Size(const List& iList) { return static_cast<std::size_t>(iList.size()); }

    static List Select(const List& iFirst, const List& iSecond, bool iWanted)
    {
        const Set second(iSecond.begin(), iSecond.end());
        List selected;
        for (const auto& each : iFirst)
            if ((second.find(each) != second.end()) == iWanted)
                selected.push_back(each);
        return selected;
    }
    static List Intersect(List& iFirst, List& iSecond) { return Select(iFirst, iSecond, true); }
    static List Subtract(List& iFirst, List& iSecond) { return Select(iFirst, iSecond, false); }

    static void Unique(List& ioList)
    {
        Set seen;
        List kept;
        for (auto each = ioList.rbegin(); each != ioList.rend(); ++each) {
            const auto before = seen.size();
            seen.insert(*each);
            if (seen.size() != before)
                kept.push_back(*each);
        }
        std::reverse(kept.begin(), kept.end());
        ioList = std::move(kept);
    }
};
