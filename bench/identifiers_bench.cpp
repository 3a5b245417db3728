// Lists of identifiers: intersection, subtraction, removal of duplicates, membership, through the
// public interface; the same by hand over plain records, which is the least there is to do; and
// what one would write with the standard sets. All give the same number of elements, or the row
// fails.
//
// The arguments are the number of identifiers in each list and the octets of each. Half of the
// second list stands in the first; of the list with duplicates each identifier stands there twice.

#include "ZORConfigServices.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <random>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

namespace
{

using Octets = std::vector<std::string>;

struct Lists {
    Octets first, second, twice;
};

Lists MakeLists(std::size_t iCount, std::size_t iOctets)
{
    std::mt19937_64 random(iCount * 64 + iOctets);
    const auto identifier = [&] {
        std::string octets(iOctets, '\0');
        for (char& each : octets)
            each = static_cast<char>(random());
        return octets;
    };
    Lists lists;
    for (std::size_t i = 0; i < iCount; ++i) {
        lists.first.push_back(identifier());
        lists.second.push_back(i % 2 ? identifier() : lists.first.back());
        lists.twice.push_back(lists.first[i / 2]);
    }
    std::shuffle(lists.second.begin(), lists.second.end(), random);
    std::shuffle(lists.twice.begin(), lists.twice.end(), random);
    return lists;
}

Lists ListsFor(const benchmark::State& iState)
{
    return MakeLists(static_cast<std::size_t>(iState.range(0)),
                     static_cast<std::size_t>(iState.range(1)));
}

void Count(benchmark::State& ioState, std::size_t iGot, std::size_t iExpected)
{
    if (iGot != iExpected)
        ioState.SkipWithError("another result");
    ioState.SetItemsProcessed(ioState.iterations() * ioState.range(0));
}

std::size_t Kept(const Octets& iFirst, const Octets& iSecond)
{
    const std::unordered_set<std::string> second(iSecond.begin(), iSecond.end());
    return static_cast<std::size_t>(std::count_if(
        iFirst.begin(), iFirst.end(), [&](const std::string& each) { return second.count(each); }));
}

std::size_t Distinct(const Octets& iList)
{
    return std::unordered_set<std::string>(iList.begin(), iList.end()).size();
}

// Ours.

_SEQUENCE_CORBAAny ListOf(const Octets& iOctets)
{
    const int count = static_cast<int>(iOctets.size());
    _SEQUENCE_CORBAAny list;
    list.maximum(count);
    list.length(count);
    for (int i = 0; i < count; ++i) {
        const std::string& octets = iOctets[static_cast<std::size_t>(i)];
        _SEQUENCE_octet identifier;
        identifier.maximum(static_cast<long>(octets.size()));
        identifier.length(static_cast<long>(octets.size()));
        std::memcpy(identifier.buffer(), octets.data(), octets.size());
        list[i] << identifier;
    }
    return list;
}

void IntersectOurs(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    _SEQUENCE_CORBAAny first = ListOf(lists.first);
    _SEQUENCE_CORBAAny second = ListOf(lists.second);
    int length = 0;
    for (auto _ : ioState) {
        const _SEQUENCE_CORBAAny common = SequenceCrbAnyIntersection(first, second);
        length = common.length();
        benchmark::DoNotOptimize(common.buffer());
    }
    Count(ioState, static_cast<std::size_t>(length), Kept(lists.first, lists.second));
}

void SubtractOurs(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    _SEQUENCE_CORBAAny first = ListOf(lists.first);
    _SEQUENCE_CORBAAny second = ListOf(lists.second);
    int length = 0;
    for (auto _ : ioState) {
        const _SEQUENCE_CORBAAny further = SequenceCrbAnySubstraction(first, second);
        length = further.length();
        benchmark::DoNotOptimize(further.buffer());
    }
    Count(ioState, static_cast<std::size_t>(length),
          lists.first.size() - Kept(lists.first, lists.second));
}

// Times the removal alone: it is done to copies of the list that are made beforehand.
template <class List, class Remove>
std::size_t TimeRemoval(benchmark::State& ioState, const List& iList, Remove iRemove)
{
    const std::size_t copies =
        std::max<std::size_t>(1, 10000 / static_cast<std::size_t>(ioState.range(0)));
    std::size_t length = 0;
    while (ioState.KeepRunningBatch(static_cast<benchmark::IterationCount>(copies))) {
        std::vector<List> lists(copies, iList);
        const auto start = std::chrono::steady_clock::now();
        for (List& list : lists)
            length = iRemove(list);
        const auto end = std::chrono::steady_clock::now();
        ioState.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    return length;
}

void UniqueOurs(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    const std::size_t length =
        TimeRemoval(ioState, ListOf(lists.twice), [](_SEQUENCE_CORBAAny& ioList) {
            RemoveDuplicate(ioList);
            return static_cast<std::size_t>(ioList.length());
        });
    Count(ioState, length, Distinct(lists.twice));
}

void ContainsOurs(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    _SEQUENCE_CORBAAny first = ListOf(lists.first);
    CORBAAny last = first[first.length() - 1];
    int found = 0;
    for (auto _ : ioState)
        benchmark::DoNotOptimize(found = AlreadyExist(first, last));
    Count(ioState, static_cast<std::size_t>(found), 1);
}

// By hand: records with their octets inside, a table of their positions, a list of copies.

struct Record {
    std::uint32_t count;
    std::array<unsigned char, 40> octets;

    bool operator==(const Record& iOther) const
    {
        return count == iOther.count &&
               std::memcmp(octets.data(), iOther.octets.data(), count) == 0;
    }
};
using Records = std::vector<Record>;

Records RecordsOf(const Octets& iOctets)
{
    Records records;
    for (const std::string& each : iOctets) {
        Record record{static_cast<std::uint32_t>(each.size()), {}};
        std::memcpy(record.octets.data(), each.data(), each.size());
        records.push_back(record);
    }
    return records;
}

class Positions
{
public:
    explicit Positions(const Records& iRecords) : _Records(iRecords)
    {
        std::size_t slots = 16;
        while (slots < 2 * iRecords.size())
            slots *= 2;
        _Slots.resize(slots);
    }
    bool Add(std::size_t iPosition)
    {
        std::uint32_t& slot = _Slots[Seek(_Records[iPosition])];
        if (slot != 0)
            return false;
        slot = static_cast<std::uint32_t>(iPosition + 1);
        return true;
    }
    bool Contains(const Record& iRecord) const { return _Slots[Seek(iRecord)] != 0; }

private:
    static std::uint64_t Hash(const Record& iRecord)
    {
        std::uint64_t hash = iRecord.count;
        for (std::size_t at = 0; at < iRecord.count; at += 8) {
            std::uint64_t word = 0; // the octets behind the last are 0
            std::memcpy(&word, iRecord.octets.data() + at, 8);
            hash = (hash ^ word) * 0x9e3779b97f4a7c15;
            hash ^= hash >> 32;
        }
        return hash;
    }
    std::size_t Seek(const Record& iRecord) const
    {
        std::size_t at = Hash(iRecord) & (_Slots.size() - 1);
        while (_Slots[at] != 0 && !(_Records[_Slots[at] - 1] == iRecord))
            at = (at + 1) & (_Slots.size() - 1);
        return at;
    }

    const Records& _Records;
    std::vector<std::uint32_t> _Slots;
};

template <bool kWanted>
Records Select(const Records& iFirst, const Records& iSecond)
{
    Positions positions(iSecond);
    for (std::size_t i = 0; i < iSecond.size(); ++i)
        positions.Add(i);
    Records selected;
    for (const Record& each : iFirst)
        if (positions.Contains(each) == kWanted)
            selected.push_back(each);
    return selected;
}

template <bool kWanted>
void SelectByHand(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    const Records first = RecordsOf(lists.first);
    const Records second = RecordsOf(lists.second);
    std::size_t length = 0;
    for (auto _ : ioState) {
        const Records selected = Select<kWanted>(first, second);
        length = selected.size();
        benchmark::DoNotOptimize(selected.data());
    }
    const std::size_t kept = Kept(lists.first, lists.second);
    Count(ioState, length, kWanted ? kept : lists.first.size() - kept);
}

void UniqueByHand(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    const std::size_t length = TimeRemoval(ioState, RecordsOf(lists.twice), [](Records& ioList) {
        Positions positions(ioList);
        std::vector<bool> last(ioList.size());
        for (std::size_t i = ioList.size(); i-- > 0;)
            last[i] = positions.Add(i);
        Records kept;
        for (std::size_t i = 0; i < ioList.size(); ++i)
            if (last[i])
                kept.push_back(ioList[i]);
        ioList = std::move(kept);
        return ioList.size();
    });
    Count(ioState, length, Distinct(lists.twice));
}

void ContainsByHand(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    const Records first = RecordsOf(lists.first);
    const Record last = first.back();
    bool found = false;
    for (auto _ : ioState)
        benchmark::DoNotOptimize(found =
                                     std::find(first.begin(), first.end(), last) != first.end());
    Count(ioState, found, 1);
}

// With the standard sets.

template <class Set, bool kWanted>
void SelectWithSet(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    std::size_t length = 0;
    for (auto _ : ioState) {
        const Set second(lists.second.begin(), lists.second.end());
        Octets selected;
        for (const std::string& each : lists.first)
            if ((second.count(each) != 0) == kWanted)
                selected.push_back(each);
        length = selected.size();
        benchmark::DoNotOptimize(selected.data());
    }
    const std::size_t kept = Kept(lists.first, lists.second);
    Count(ioState, length, kWanted ? kept : lists.first.size() - kept);
}

template <class Set>
void UniqueWithSet(benchmark::State& ioState)
{
    const Lists lists = ListsFor(ioState);
    const std::size_t length = TimeRemoval(ioState, lists.twice, [](Octets& ioList) {
        Set seen;
        Octets kept;
        for (auto each = ioList.rbegin(); each != ioList.rend(); ++each)
            if (seen.insert(*each).second)
                kept.push_back(*each);
        std::reverse(kept.begin(), kept.end());
        ioList = std::move(kept);
        return ioList.size();
    });
    Count(ioState, length, Distinct(lists.twice));
}

void Sizes(benchmark::internal::Benchmark* ioRow)
{
    for (const int octets : {16, 36})
        for (const int count : {10, 100, 1000, 10000, 40000, 100000})
            ioRow->Args({count, octets});
}

using HashSet = std::unordered_set<std::string>;
using TreeSet = std::set<std::string>;

BENCHMARK(IntersectOurs)->Apply(Sizes);
BENCHMARK_TEMPLATE(SelectByHand, true)->Name("IntersectByHand")->Apply(Sizes);
BENCHMARK_TEMPLATE(SelectWithSet, HashSet, true)->Name("IntersectHashSet")->Apply(Sizes);
BENCHMARK_TEMPLATE(SelectWithSet, TreeSet, true)->Name("IntersectTreeSet")->Apply(Sizes);

BENCHMARK(SubtractOurs)->Apply(Sizes);
BENCHMARK_TEMPLATE(SelectByHand, false)->Name("SubtractByHand")->Apply(Sizes);
BENCHMARK_TEMPLATE(SelectWithSet, HashSet, false)->Name("SubtractHashSet")->Apply(Sizes);
BENCHMARK_TEMPLATE(SelectWithSet, TreeSet, false)->Name("SubtractTreeSet")->Apply(Sizes);

BENCHMARK(UniqueOurs)->UseManualTime()->Apply(Sizes);
BENCHMARK(UniqueByHand)->UseManualTime()->Apply(Sizes);
BENCHMARK_TEMPLATE(UniqueWithSet, HashSet)->Name("UniqueHashSet")->UseManualTime()->Apply(Sizes);
BENCHMARK_TEMPLATE(UniqueWithSet, TreeSet)->Name("UniqueTreeSet")->UseManualTime()->Apply(Sizes);

BENCHMARK(ContainsOurs)->Apply(Sizes);
BENCHMARK(ContainsByHand)->Apply(Sizes);

} // namespace

BENCHMARK_MAIN();
