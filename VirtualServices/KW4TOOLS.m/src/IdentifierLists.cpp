#include "IdentifierLists.h"

#include "IdentifierTable.h"

namespace
{

// The second list of a search, and the receiver Y in it.
//
// An element without identifier behind one with an identifier finds nothing that this one has not
// found. Elements without identifier at the start of the list stand for what Y holds then: nothing
// yet, which is the empty identifier, or, once a search has come as far as an identifier, one of
// the list. So all that has to be known of Y is whether it is still empty.
class SearchedList
{
public:
    explicit SearchedList(const _SEQUENCE_CORBAAny& iList)
        : _Table(iList.buffer(), iList.length()),
          _EmptyAtStart(iList.length() > 0 && !HoldsIdentifier(iList[0]))
    {
        for (int i = 0; i < iList.length(); ++i)
            if (HoldsIdentifier(iList[i])) {
                _Table.Add(i);
                _HasIdentifiers = true;
            }
    }

    // Looks for X and ends where it finds it. Found at the start of the list, Y is left empty.
    bool Find(const Identifier& iX)
    {
        if (_EmptyAtStart && iX.count == 0)
            return true;
        return Scan(iX);
    }

    // Looks for X, always to the end of the list.
    bool Scan(const Identifier& iX)
    {
        const bool found = (_EmptyAtStart && iX.count == 0) || _Table.Contains(iX);
        if (_HasIdentifiers)
            _EmptyAtStart = false;
        return found;
    }

private:
    IdentifierTable<> _Table;
    bool _EmptyAtStart;
    bool _HasIdentifiers = false;
};

// For each element, whether the identifier it leaves in X is held by an element behind it.
std::vector<bool> HeldBehind(const _SEQUENCE_CORBAAny& iList)
{
    std::vector<bool> held(static_cast<std::size_t>(iList.length()));
    IdentifierTable table(iList.buffer(), iList.length());
    // From the end, in runs of an identifier and the elements that repeat it. Before the first
    // identifier, X is empty.
    for (int end = iList.length(); end > 0;) {
        int start = end - 1;
        while (start >= 0 && !HoldsIdentifier(iList[start]))
            --start;
        const bool behind = start >= 0 ? !table.Add(start) : table.Contains({});
        for (int i = std::max(start, 0); i < end; ++i)
            held[static_cast<std::size_t>(i)] = behind;
        end = start;
    }
    return held;
}

int LastIdentifier(const _SEQUENCE_CORBAAny& iList)
{
    int last = iList.length() - 1;
    while (last >= 0 && !HoldsIdentifier(iList[last]))
        --last;
    return last;
}

} // namespace

// A search begins right behind X's element. When an element without identifier stands there, it and
// its like up to the next identifier are Y as the search before has left it: X of that one when it
// found something, else the last identifier of the list when it came across one at all.
std::vector<int> LastOccurrences(const _SEQUENCE_CORBAAny& iList)
{
    std::vector<int> kept;
    if (iList.length() < 1)
        return kept;
    const std::vector<bool> heldBehind = HeldBehind(iList);
    const int lastIdentifier = LastIdentifier(iList);
    IdentifierReceiver x;
    Identifier y;
    for (int i = 0; i + 1 < iList.length(); ++i) {
        const Identifier& searched = x.Read(iList[i]);
        if (!HoldsIdentifier(iList[i + 1]) && searched == y)
            continue;
        if (heldBehind[static_cast<std::size_t>(i)]) {
            y = searched;
            continue;
        }
        if (i < lastIdentifier)
            y = IdentifierIn(iList[lastIdentifier]);
        kept.push_back(i);
    }
    kept.push_back(iList.length() - 1);
    return kept;
}

std::vector<int> CommonElements(const _SEQUENCE_CORBAAny& iFirst, const _SEQUENCE_CORBAAny& iSecond)
{
    std::vector<int> kept;
    SearchedList second(iSecond);
    IdentifierReceiver x;
    for (int i = 0; i < iFirst.length(); ++i)
        if (second.Find(x.Read(iFirst[i])))
            kept.push_back(i);
    return kept;
}

std::vector<int> FurtherElements(const _SEQUENCE_CORBAAny& iFirst,
                                 const _SEQUENCE_CORBAAny& iSecond)
{
    std::vector<int> kept;
    SearchedList second(iSecond);
    IdentifierReceiver x;
    for (int i = 0; i < iFirst.length(); ++i)
        if (!second.Scan(x.Read(iFirst[i])))
            kept.push_back(i);
    return kept;
}
