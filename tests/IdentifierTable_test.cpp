#include "IdentifierTable.h"

#include "Sequences.h"

#include <gmock/gmock.h>

#include <set>

namespace
{

// What a table does, counted.
struct Work {
    long hashes = 0;
    long comparisons = 0;
};

struct CountingHash {
    std::uint64_t operator()(const Identifier& iIdentifier) const
    {
        ++work->hashes;
        return IdentifierHash()(iIdentifier);
    }
    Work* work;
};

// The worst there is.
struct SameHash {
    std::uint64_t operator()(const Identifier&) const { return 0x123456789abcdef0; }
};

struct CountingEqual {
    bool operator()(const Identifier& iLeft, const Identifier& iRight) const
    {
        ++work->comparisons;
        return iLeft == iRight;
    }
    Work* work;
};

Identifier View(const std::string& iOctets)
{
    return {reinterpret_cast<const unsigned char*>(iOctets.data()), iOctets.size()};
}

std::vector<MaybeIdentifier> Numbered(int iCount)
{
    std::vector<MaybeIdentifier> identifiers;
    for (int i = 0; i < iCount; ++i) {
        const std::string digits = std::to_string(i);
        identifiers.push_back("plate-" + std::string(10 - digits.size(), '0') + digits);
    }
    return identifiers;
}

// A table over a list, asked by position and by octets.
template <class Hash = IdentifierHash, class Equal = std::equal_to<Identifier>>
class Table
{
public:
    explicit Table(const std::vector<MaybeIdentifier>& iIdentifiers, Hash iHash = {},
                   Equal iEqual = {})
        : _List(Identifiers(iIdentifiers)), _Table(_List.buffer(), _List.length(), iHash, iEqual)
    {
    }

    int Enter(int iPosition)
    {
        return _Table.Enter(iPosition, _Table.HashOf(IdentifierIn(_List[iPosition])));
    }
    bool Contains(const std::string& iOctets) const
    {
        return _Table.Contains(View(iOctets), _Table.HashOf(View(iOctets)));
    }

private:
    _SEQUENCE_CORBAAny _List;
    IdentifierTable<Hash, Equal> _Table;
};

// Enters that many identifiers, each twice, and asks for each and for as many others.
Work WorkFor(int iCount)
{
    Work work;
    const std::vector<MaybeIdentifier> once = Numbered(iCount);
    std::vector<MaybeIdentifier> twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    Table table(twice, CountingHash{&work}, CountingEqual{&work});
    for (int i = 0; i < iCount; ++i)
        EXPECT_EQ(table.Enter(i), -1);
    for (int i = 0; i < iCount; ++i)
        EXPECT_EQ(table.Enter(iCount + i), i);
    for (const MaybeIdentifier& each : once) {
        EXPECT_TRUE(table.Contains(*each));
        EXPECT_FALSE(table.Contains(*each + "-unknown"));
    }
    return work;
}

} // namespace

TEST(IdentifierTable, KnowsWhatWasEnteredAndWhereItStoodLast)
{
    Table table({"p", "pq", "", "p", "p"});
    EXPECT_FALSE(table.Contains("p"));
    EXPECT_EQ(table.Enter(0), -1);
    EXPECT_EQ(table.Enter(1), -1);
    EXPECT_FALSE(table.Contains(""));
    EXPECT_EQ(table.Enter(2), -1);
    EXPECT_EQ(table.Enter(3), 0);
    EXPECT_EQ(table.Enter(4), 3);
    for (const char* const each : {"p", "pq", ""})
        EXPECT_TRUE(table.Contains(each)) << each;
    EXPECT_FALSE(table.Contains("q"));
}

TEST(IdentifierTable, HoldsAsManyAsItWasMadeFor)
{
    for (const int count : {0, 1, 31, 32, 33, 64, 65, 1000, 1024, 1025}) {
        const std::vector<MaybeIdentifier> identifiers = Numbered(count);
        Table table(identifiers);
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(table.Enter(i), -1) << count;
        for (const MaybeIdentifier& each : identifiers)
            EXPECT_TRUE(table.Contains(*each)) << count;
        EXPECT_FALSE(table.Contains("unknown")) << count;
    }
}

TEST(IdentifierTable, CostsAsMuchMoreAsThereAreMoreIdentifiers)
{
    const Work few = WorkFor(10000);
    const Work many = WorkFor(40000);
    EXPECT_EQ(few.hashes, 4 * 10000) << "one for each question";
    EXPECT_EQ(many.hashes, 4 * 40000);
    // Next to none but those that find their identifier.
    EXPECT_LE(few.comparisons, 2 * 10000 + 100);
    EXPECT_LE(many.comparisons, 2 * 40000 + 100);
}

TEST(IdentifierTable, WithOneHashForAllIsRightAndComparesNoMoreThanEachWithEach)
{
    constexpr int kCount = 500;
    Work work;
    const std::vector<MaybeIdentifier> identifiers = Numbered(kCount);
    Table table(identifiers, SameHash{}, CountingEqual{&work});
    for (int i = 0; i < kCount; ++i)
        EXPECT_EQ(table.Enter(i), -1);
    EXPECT_LE(work.comparisons, kCount * (kCount - 1) / 2);
    for (int i = 0; i < kCount; ++i)
        EXPECT_EQ(table.Enter(i), i);
    for (const MaybeIdentifier& each : identifiers)
        EXPECT_TRUE(table.Contains(*each));
    EXPECT_FALSE(table.Contains("unknown"));
}

TEST(HashesAhead, GivesTheHashOfEachElementInTurn)
{
    for (const int count : {0, 1, 15, 16, 17, 100, 2000, 2001, 2017, 3000}) {
        std::vector<MaybeIdentifier> identifiers = Numbered(count);
        if (count > 20)
            identifiers[20].reset();
        const _SEQUENCE_CORBAAny list = Identifiers(identifiers);
        const IdentifierTable table(list.buffer(), count);
        HashesAhead hashes(table, list.buffer(), count);
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(hashes.Next(), IdentifierHash()(IdentifierIn(list[i])))
                << i << " of " << count;
    }
}

TEST(Identifier, IsTheSameWhenLengthAndAllOctetsAre)
{
    for (std::size_t count = 0; count < 70; ++count) {
        const std::string octets(count, 'a');
        const std::string same = octets;
        EXPECT_TRUE(View(octets) == View(same)) << count;
        EXPECT_FALSE(View(octets) == View(octets + 'a')) << count;
        for (std::size_t at = 0; at < count; ++at) {
            std::string other = octets;
            other[at] = 'b';
            EXPECT_FALSE(View(octets) == View(other)) << at << " of " << count;
        }
    }
}

// One of each length that is read in a way of its own.
TEST(IdentifierHash, IsTheSameInEveryProcess)
{
    const std::string octets = "plate-0000000001 of the left wing, front";
    EXPECT_EQ(IdentifierHash()({}), IdentifierHash()(View("")));
    const std::pair<std::size_t, std::uint64_t> rows[] = {
        {0, 8674397649689524821u},   {1, 8662640117978118972u},   {3, 4610483659671961514u},
        {4, 11799159381742793255u},  {7, 1225352163228768863u},   {8, 2811274031065743742u},
        {15, 10744718217816897416u}, {16, 18437299830720660311u}, {17, 13726143527957530283u},
        {32, 17061790852986137747u}, {33, 10232370878390109673u}, {40, 13208867568409859742u},
    };
    for (const auto& [count, hash] : rows)
        EXPECT_EQ(IdentifierHash()(View(octets.substr(0, count))), hash) << count;
}

TEST(IdentifierHash, DoesNotDependOnWhatStandsBesideTheOctets)
{
    for (std::size_t count = 0; count <= 40; ++count) {
        const std::string octets(count, 'p');
        const std::string left = "aaaaaaaa" + octets + "aaaaaaaa";
        const std::string right = "bbbbbbbb" + octets + "bbbbbbbb";
        const auto within = [&](const std::string& text) {
            return Identifier{reinterpret_cast<const unsigned char*>(text.data()) + 8, count};
        };
        EXPECT_EQ(IdentifierHash()(within(left)), IdentifierHash()(within(right))) << count;
    }
}

TEST(IdentifierHash, TellsEveryLengthAndEveryOctet)
{
    std::set<std::uint64_t> hashes;
    for (std::size_t count = 0; count <= 80; ++count)
        for (const char fill : {'\0', 'a', '\xff'})
            if (count > 0 || fill == 'a')
                hashes.insert(IdentifierHash()(View(std::string(count, fill))));
    EXPECT_EQ(hashes.size(), 80u * 3 + 1);

    for (const std::size_t count : {1u, 3u, 4u, 7u, 8u, 15u, 16u, 17u, 32u, 36u, 41u}) {
        hashes.clear();
        for (std::size_t at = 0; at < count; ++at)
            for (int octet = 1; octet < 256; ++octet) {
                std::string changed(count, '\0');
                changed[at] = static_cast<char>(octet);
                hashes.insert(IdentifierHash()(View(changed)));
            }
        EXPECT_EQ(hashes.size(), 255 * count);
    }
}

// Identifiers that people number one after the other fall evenly on a table's slots.
TEST(IdentifierHash, SpreadsNumberedIdentifiersOverLowAndHighBits)
{
    constexpr std::size_t kIdentifiers = 1 << 16;
    constexpr std::size_t kBoxes = 1 << 8;
    std::vector<long> low(kBoxes), high(kBoxes);
    for (const MaybeIdentifier& each : Numbered(kIdentifiers)) {
        const std::uint64_t hash = IdentifierHash()(View(*each));
        ++low[hash % kBoxes];
        ++high[hash >> 56];
    }
    for (const std::vector<long>& boxes : {low, high})
        for (const long box : boxes) {
            EXPECT_GT(box, 256 - 96); // six standard deviations
            EXPECT_LT(box, 256 + 96);
        }
}
