// Lists of identifiers: intersection, subtraction, removal of duplicates, membership, through the
// public interface; by hand over plain records, with a table of their positions; and with sets.

#include "ZORConfigServices.h"
#include "identifiers_rows.h"

#include <array>
#include <cstring>
#include <set>

namespace
{

struct Ours {
    using List = _SEQUENCE_CORBAAny;

    static List Make(const Octets& iOctets)
    {
        const int count = static_cast<int>(iOctets.size());
        List list;
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
    static std::size_t Size(const List& iList) { return static_cast<std::size_t>(iList.length()); }
    static List Intersect(List& iFirst, List& iSecond)
    {
        return SequenceCrbAnyIntersection(iFirst, iSecond);
    }
    static List Subtract(List& iFirst, List& iSecond)
    {
        return SequenceCrbAnySubstraction(iFirst, iSecond);
    }
    static void Unique(List& ioList) { RemoveDuplicate(ioList); }
};

// The octets inside; those behind the last are 0.
struct Record {
    std::uint32_t count;
    std::array<unsigned char, 40> octets;

    bool operator==(const Record& iOther) const
    {
        return count == iOther.count &&
               std::memcmp(octets.data(), iOther.octets.data(), count) == 0;
    }
};

class Positions
{
public:
    explicit Positions(const std::vector<Record>& iRecords) : _Records(iRecords)
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
            std::uint64_t word = 0;
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

    const std::vector<Record>& _Records;
    std::vector<std::uint32_t> _Slots;
};

struct Reference {
    using List = std::vector<Record>;

    static List Make(const Octets& iOctets)
    {
        List records;
        for (const std::string& each : iOctets) {
            Record record{static_cast<std::uint32_t>(each.size()), {}};
            std::memcpy(record.octets.data(), each.data(), each.size());
            records.push_back(record);
        }
        return records;
    }
    static std::size_t Size(const List& iList) { return iList.size(); }

    static List Select(const List& iFirst, const List& iSecond, bool iWanted)
    {
        Positions positions(iSecond);
        for (std::size_t i = 0; i < iSecond.size(); ++i)
            positions.Add(i);
        List selected;
        for (const Record& each : iFirst)
            if (positions.Contains(each) == iWanted)
                selected.push_back(each);
        return selected;
    }
    static List Intersect(List& iFirst, List& iSecond) { return Select(iFirst, iSecond, true); }
    static List Subtract(List& iFirst, List& iSecond) { return Select(iFirst, iSecond, false); }

    static void Unique(List& ioList)
    {
        Positions positions(ioList);
        std::vector<bool> last(ioList.size());
        for (std::size_t i = ioList.size(); i-- > 0;)
            last[i] = positions.Add(i);
        List kept;
        for (std::size_t i = 0; i < ioList.size(); ++i)
            if (last[i])
                kept.push_back(ioList[i]);
        ioList = std::move(kept);
    }
};

// Whether the last of a list is in it.
template <class Way, class Contains>
void ContainsRows(const std::string& iWho, Contains iContains)
{
    for (const int octets : {16, 36})
        for (const int count : {10, 1000, 100000})
            Row("contains/" + std::to_string(octets), count, iWho, [=](benchmark::State& ioState) {
                using Index = decltype(Way::Size(typename Way::List()));
                auto list = Way::Make(Identifiers::Of(count, octets).first);
                auto last = list[static_cast<Index>(count - 1)];
                for ([[maybe_unused]] auto each : ioState)
                    benchmark::DoNotOptimize(iContains(list, last));
                Check(ioState, iContains(list, last));
            });
}

const Rows kRows([] {
    IdentifierRows<Ours>("ours");
    IdentifierRows<Reference>("reference");
    IdentifierRows<WithSet<std::unordered_set<std::string>, Octets>>("std::unordered_set");
    IdentifierRows<WithSet<std::set<std::string>, Octets>>("std::set");

    const auto find = [](const auto& iList, const auto& iLast) {
        return std::find(iList.begin(), iList.end(), iLast) != iList.end();
    };
    ContainsRows<Ours>("ours", [](_SEQUENCE_CORBAAny& iList, CORBAAny& iLast) {
        return AlreadyExist(iList, iLast) != 0;
    });
    ContainsRows<Reference>("reference", find);
    ContainsRows<WithSet<std::set<std::string>, Octets>>("std::find", find);
});

} // namespace
