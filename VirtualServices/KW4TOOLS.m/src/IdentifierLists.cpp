#include "IdentifierLists.h"

#include "IdentifierTable.h"

#include <algorithm>
#include <utility>

namespace
{

// Positions are chosen without a branch, which would be mispredicted every other time.
class PositionList
{
public:
    explicit PositionList(int iMost) : _Positions(static_cast<std::size_t>(std::max(iMost, 0)) + 1)
    {
    }

    void AddIf(bool iChosen, int iPosition)
    {
        _Positions[_Count] = iPosition;
        _Count += iChosen;
    }
    std::vector<int> Take() &&
    {
        _Positions.resize(_Count);
        return std::move(_Positions);
    }

private:
    std::vector<int> _Positions; // and one place more
    std::size_t _Count = 0;
};

// The second list of a search, and the receiver Y in it.
//
// An element without identifier behind one with an identifier finds nothing that this one has not
// found. Elements without identifier at the start of the list stand for what Y holds then: nothing
// yet, which is the empty identifier, or, once a search has come as far as an identifier, one of
// the list. So all that has to be known of Y is whether it is still empty.
class SearchedList
{
public:
    using Table = IdentifierTable<>;

    explicit SearchedList(const _SEQUENCE_CORBAAny& iList)
        : _Table(iList.buffer(), iList.length()),
          _EmptyAtStart(iList.length() > 0 && !HoldsIdentifier(iList[0]))
    {
        const CORBAAny* const elements = iList.buffer();
        HashesAhead hashes(_Table, elements, iList.length());
        for (int i = 0; i < iList.length(); ++i) {
            const std::uint64_t hash = hashes.Next();
            if (!HoldsIdentifier(elements[i]))
                continue;
            _Table.Enter(i, hash);
            _HasIdentifiers = true;
        }
    }

    const Table& Identifiers() const { return _Table; }

    // Looks for X and ends where it finds it. Found at the start of the list, Y is left empty.
    bool Find(const Identifier& iX, std::uint64_t iHash)
    {
        return (_EmptyAtStart && iX.count == 0) || Scan(iX, iHash);
    }

    // Looks for X, always to the end of the list.
    bool Scan(const Identifier& iX, std::uint64_t iHash)
    {
        const bool found = (_EmptyAtStart && iX.count == 0) || _Table.Contains(iX, iHash);
        if (_HasIdentifiers)
            _EmptyAtStart = false;
        return found;
    }

private:
    Table _Table;
    bool _EmptyAtStart;
    bool _HasIdentifiers = false;
};

// The positions in the first list whose X a search of the second finds, or does not find, as
// wanted.
template <class Search>
std::vector<int> Selected(const _SEQUENCE_CORBAAny& iFirst, const _SEQUENCE_CORBAAny& iSecond,
                          bool iWanted, Search iSearch)
{
    PositionList selected(iFirst.length());
    SearchedList second(iSecond);
    const CORBAAny* const elements = iFirst.buffer();
    HashesAhead hashes(second.Identifiers(), elements, iFirst.length());
    Identifier x;
    std::uint64_t hashOfX = second.Identifiers().HashOf(x);
    for (int i = 0; i < iFirst.length(); ++i) {
        const std::uint64_t hash = hashes.Next();
        if (HoldsIdentifier(elements[i])) {
            x = IdentifierIn(elements[i]);
            hashOfX = hash;
        }
        selected.AddIf(iSearch(second, x, hashOfX) == iWanted, i);
    }
    return std::move(selected).Take();
}

// What the list of a removal of duplicates holds, for X and Y.
class SearchedRest
{
public:
    explicit SearchedRest(const _SEQUENCE_CORBAAny& iList)
        : _HeldAgain(static_cast<std::size_t>(iList.length()) + 1)
    {
        const CORBAAny* const elements = iList.buffer();
        IdentifierTable table(elements, iList.length());
        HashesAhead hashes(table, elements, iList.length());
        for (int i = 0; i < iList.length(); ++i) {
            const std::uint64_t hash = hashes.Next();
            if (!HoldsIdentifier(elements[i]))
                continue;
            _HeldAgain[Place(table.Enter(i, hash))] = true;
            _Last = i;
            ++_Count;
        }
        _HoldsEmpty = table.Contains({}, table.HashOf({}));
    }

    // Of the elements.
    int CountOfIdentifiers() const { return _Count; }

    // Whether the identifier that this element holds stands again behind it.
    bool HeldAgain(int iPosition) const { return _HeldAgain[Place(iPosition)]; }
    // Whether the empty identifier is in the list.
    bool HoldsEmpty() const { return _HoldsEmpty; }
    // The position of the last identifier; -1 when there is none.
    int Last() const { return _Last; }

private:
    static std::size_t Place(int iPosition) { return static_cast<std::size_t>(iPosition) + 1; }

    std::vector<char> _HeldAgain; // by position + 1; the first stands for no position
    bool _HoldsEmpty;
    int _Last = -1;
    int _Count = 0;
};

} // namespace

// A search begins right behind X's element. When an element without identifier stands there, it and
// its like up to the next identifier are Y as the search before has left it: X of that one when it
// found something, else the last identifier of the list when it came across one at all.
std::vector<int> LastOccurrences(const _SEQUENCE_CORBAAny& iList)
{
    if (iList.length() < 1)
        return {};
    const SearchedRest rest(iList);
    PositionList kept(iList.length());
    if (rest.CountOfIdentifiers() == iList.length()) { // as nearly always
        for (int i = 0; i < iList.length(); ++i)
            kept.AddIf(!rest.HeldAgain(i), i);
        return std::move(kept).Take();
    }
    const CORBAAny* const elements = iList.buffer();
    Identifier x;
    Identifier y;
    bool heldAgain = rest.HoldsEmpty(); // X, behind its element; an empty X before any identifier
    for (int i = 0; i + 1 < iList.length(); ++i) {
        if (HoldsIdentifier(elements[i])) {
            x = IdentifierIn(elements[i]);
            heldAgain = rest.HeldAgain(i);
        }
        if (!HoldsIdentifier(elements[i + 1]) && x == y)
            continue;
        if (heldAgain) {
            y = x;
            continue;
        }
        if (i < rest.Last())
            y = IdentifierIn(elements[rest.Last()]);
        kept.AddIf(true, i);
    }
    kept.AddIf(true, iList.length() - 1);
    return std::move(kept).Take();
}

std::vector<int> CommonElements(const _SEQUENCE_CORBAAny& iFirst, const _SEQUENCE_CORBAAny& iSecond)
{
    return Selected(iFirst, iSecond, true,
                    [](SearchedList& i, const Identifier& iX, std::uint64_t iHash) {
                        return i.Find(iX, iHash);
                    });
}

std::vector<int> FurtherElements(const _SEQUENCE_CORBAAny& iFirst,
                                 const _SEQUENCE_CORBAAny& iSecond)
{
    return Selected(iFirst, iSecond, false,
                    [](SearchedList& i, const Identifier& iX, std::uint64_t iHash) {
                        return i.Scan(iX, iHash);
                    });
}
