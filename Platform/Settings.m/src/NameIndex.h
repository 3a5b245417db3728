#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

// Finds the numbers of things by their names: a hash table that leaves the names where they are.
class NameIndex
{
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    // The number that was added with that name, or kNone. `iIsNamed` tells whether the thing with a
    // number has the name.
    template <class IsNamed>
    std::uint32_t Find(std::string_view iName, IsNamed iIsNamed) const
    {
        if (_Slots.empty())
            return kNone;
        const std::uint32_t hash = HashOf(iName);
        for (std::size_t at = hash & Mask();; at = (at + 1) & Mask()) {
            const Slot& slot = _Slots[at];
            if (slot.number == kNone || (slot.hash == hash && iIsNamed(slot.number)))
                return slot.number;
        }
    }

    // Adds a number under a name that none has yet.
    void Add(std::string_view iName, std::uint32_t iNumber) { Add({HashOf(iName), iNumber}); }

    // The same numbers, each replaced by what the function makes of it, without those it makes
    // kNone of.
    template <class Renumber>
    NameIndex Renumbered(Renumber iRenumber) const
    {
        NameIndex result;
        for (const Slot& each : _Slots)
            if (each.number != kNone && iRenumber(each.number) != kNone)
                result.Add({each.hash, iRenumber(each.number)});
        return result;
    }

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t number;
    };

    static std::uint32_t HashOf(std::string_view iName)
    {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(iName));
    }

    std::size_t Mask() const { return _Slots.size() - 1; }

    void Add(const Slot& iSlot)
    {
        if (2 * (_Count + 1) > _Slots.size())
            Grow();
        ++_Count;
        Place(iSlot);
    }

    void Place(const Slot& iSlot)
    {
        std::size_t at = iSlot.hash & Mask();
        while (_Slots[at].number != kNone)
            at = (at + 1) & Mask();
        _Slots[at] = iSlot;
    }

    void Grow()
    {
        const std::vector<Slot> before = std::move(_Slots);
        _Slots.assign(before.empty() ? 16 : 4 * before.size(), Slot{0, kNone});
        for (const Slot& each : before)
            if (each.number != kNone)
                Place(each);
    }

    std::vector<Slot> _Slots; // open addressing, at most half of them full; a power of 2
    std::size_t _Count = 0;
};
