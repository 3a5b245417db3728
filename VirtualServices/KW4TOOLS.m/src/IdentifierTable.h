#pragma once

#include "Identifier.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>

// The identifiers of a list by their octets: an open-addressed table of positions. The octets stay
// where they are in the list, which must outlive the table unchanged.
//
// A slot keeps half of the identifier's hash, so that almost every octet comparison is one that
// finds what it looks for. The table is at most half full. Were the hashes of all identifiers the
// same, every look-up would walk along all of them, and building the table would cost the square of
// their number: what comparing each with each costs.
template <class Hash = IdentifierHash, class Equal = std::equal_to<Identifier>>
class IdentifierTable
{
public:
    // Empty, with slots for `iCount` elements of the list at `iElements`.
    IdentifierTable(const CORBAAny* iElements, int iCount, Hash iHash = {}, Equal iEqual = {})
        : _Elements(iElements), _Hash(iHash), _Equal(iEqual)
    {
        std::size_t slots = kFewSlots;
        while (slots / 2 < static_cast<std::size_t>(std::max(iCount, 0)))
            slots *= 2;
        if (slots > kFewSlots) {
            _Many = std::make_unique<Slot[]>(slots);
            _Slots = _Many.get();
        }
        _Mask = slots - 1;
    }
    IdentifierTable(const IdentifierTable&) = delete;
    IdentifierTable& operator=(const IdentifierTable&) = delete;

    std::uint64_t HashOf(const Identifier& iIdentifier) const { return _Hash(iIdentifier); }

    // Enters that position of the list for the identifier there, and returns the position that was
    // entered for it before, or -1.
    int Enter(int iPosition, std::uint64_t iHash)
    {
        Slot& slot = _Slots[Seek(IdentifierIn(_Elements[iPosition]), iHash)];
        const int before = static_cast<int>(slot.number) - 1;
        slot = {Tag(iHash), static_cast<std::uint32_t>(iPosition) + 1};
        return before;
    }

    bool Contains(const Identifier& iIdentifier, std::uint64_t iHash) const
    {
        return _Slots[Seek(iIdentifier, iHash)].number != 0;
    }

    // Brings the slot that a look-up with that hash begins at nearer to the processor.
    void Fetch(std::uint64_t iHash) const { __builtin_prefetch(&_Slots[iHash & _Mask]); }

private:
    struct Slot {
        std::uint32_t tag;
        std::uint32_t number; // position + 1; 0 is a free slot
    };
    static constexpr std::size_t kFewSlots = 64; // half a kilobyte of stack, and no allocation

    static std::uint32_t Tag(std::uint64_t iHash)
    {
        return static_cast<std::uint32_t>(iHash >> 32);
    }

    // The slot of the identifier, or the free one where it belongs.
    std::size_t Seek(const Identifier& iIdentifier, std::uint64_t iHash) const
    {
        std::size_t at = iHash & _Mask;
        for (const std::uint32_t tag = Tag(iHash); _Slots[at].number != 0; at = (at + 1) & _Mask)
            if (_Slots[at].tag == tag &&
                _Equal(IdentifierIn(_Elements[_Slots[at].number - 1]), iIdentifier))
                break;
        return at;
    }

    const CORBAAny* _Elements;
    [[no_unique_address]] Hash _Hash;
    [[no_unique_address]] Equal _Equal;
    std::array<Slot, kFewSlots> _Few{};
    std::unique_ptr<Slot[]> _Many;
    Slot* _Slots = _Few.data();
    std::size_t _Mask;
};

// The hashes of a list's elements, one after the other, for look-ups in a table. They are computed
// some elements ahead, so that the slots of a table that is larger than the caches are on their way
// when the look-up comes. An element that holds no identifier has the hash of the empty one.
template <class Table>
class HashesAhead
{
public:
    HashesAhead(const Table& iTable, const CORBAAny* iElements, int iCount)
        : _Table(iTable), _Next(iElements), _End(iElements + std::max(iCount, 0)),
          _IsAhead(iCount > kInCache)
    {
        for (std::size_t i = 0; _IsAhead && i < kAhead; ++i)
            _Hashes[i] = Compute();
    }

    // The hash of the next element. REQUIRES: there is one.
    std::uint64_t Next()
    {
        if (!_IsAhead)
            return _Table.HashOf(IdentifierIn(*_Next++));
        std::uint64_t& place = _Hashes[_At++ % kAhead];
        const std::uint64_t hash = place;
        if (_Next != _End)
            place = Compute();
        return hash;
    }

private:
    static constexpr std::size_t kAhead = 16; // look-ups take as long together as memory does
    static constexpr int kInCache = 2000;     // up to here list and table are near anyhow

    std::uint64_t Compute()
    {
        const std::uint64_t hash = _Table.HashOf(IdentifierIn(*_Next++));
        _Table.Fetch(hash);
        return hash;
    }

    const Table& _Table;
    const CORBAAny* _Next; // to be computed
    const CORBAAny* _End;
    bool _IsAhead;
    std::size_t _At = 0; // of the next hash, modulo kAhead
    std::array<std::uint64_t, kAhead> _Hashes;
};
