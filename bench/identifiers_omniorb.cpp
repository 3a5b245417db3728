#include "identifiers_rows.h"

#include <cstring>
#include <omniORB4/CORBA.h>
#include <string_view>

namespace
{

std::string_view OctetsOf(const CORBA::Any& iAny)
{
    const CORBA::OctetSeq* octets = nullptr;
    iAny >>= octets;
    return {reinterpret_cast<const char*>(octets->get_buffer()), octets->length()};
}

// Lists of anys, and a set of what is in them.
struct WithAnys {
    using List = std::vector<CORBA::Any>;

    static List Make(const Octets& iOctets)
    {
        List list(iOctets.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            CORBA::OctetSeq octets;
            octets.length(static_cast<CORBA::ULong>(iOctets[i].size()));
            std::memcpy(octets.get_buffer(), iOctets[i].data(), iOctets[i].size());
            list[i] <<= octets;
        }
        return list;
    }
    static std::size_t Size(const List& iList) { return iList.size(); }

    static List Select(const List& iFirst, const List& iSecond, bool iWanted)
    {
        std::unordered_set<std::string_view> second;
        for (const CORBA::Any& each : iSecond)
            second.insert(OctetsOf(each));
        List selected;
        for (const CORBA::Any& each : iFirst)
            if ((second.count(OctetsOf(each)) != 0) == iWanted)
                selected.push_back(each);
        return selected;
    }
    static List Intersect(List& iFirst, List& iSecond) { return Select(iFirst, iSecond, true); }
    static List Subtract(List& iFirst, List& iSecond) { return Select(iFirst, iSecond, false); }

    static void Unique(List& ioList)
    {
        std::unordered_set<std::string_view> seen;
        List kept;
        for (auto each = ioList.rbegin(); each != ioList.rend(); ++each)
            if (seen.insert(OctetsOf(*each)).second)
                kept.push_back(*each);
        std::reverse(kept.begin(), kept.end());
        ioList = std::move(kept);
    }
};

const Rows kRows([] { IdentifierRows<WithAnys>("omniORB"); });

} // namespace
