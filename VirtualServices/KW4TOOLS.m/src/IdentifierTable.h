#pragma once

#include "Identifier.h"

#include <array>
#include <functional>
#include <memory>

// The identifiers of a list, to be asked whether one is among them. An open-addressed table of
// positions: the octets stay where they are in the list, which must outlive the table unchanged.
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
        while (slots / 2 < static_cast<std::size_t>(iCount))
            slots *= 2;
        if (slots > kFewSlots) {
            _Many = std::make_unique<Slot[]>(slots);
            _Slots = _Many.get();
        }
        _Mask = slots - 1;
    }
    IdentifierTable(const IdentifierTable&) = delete;
    IdentifierTable& operator=(const IdentifierTable&) = delete;

    // Adds the identifier at that position of the list, and says whether it was missing so far.
    bool Add(int iPosition)
    {
        const Identifier identifier = IdentifierIn(_Elements[iPosition]);
        const std::uint64_t hash = _Hash(identifier);
        Slot& slot = _Slots[Seek(identifier, hash)];
        if (slot.number != 0)
            return false;
        slot = {Tag(hash), static_cast<std::uint32_t>(iPosition) + 1};
        return true;
    }

    bool Contains(const Identifier& iIdentifier) const
    {
        return _Slots[Seek(iIdentifier, _Hash(iIdentifier))].number != 0;
    }

private:
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t number = 0; // position + 1; 0 is a free slot
    };
    static constexpr std::size_t kFewSlots = 64; // half a page of stack, and no allocation

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
