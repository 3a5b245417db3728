#include "memory_rows.h"

#include <cstring>
#include <omniORB4/CORBA.h>

namespace
{

const Rows kRows([] {
    AnyMemory(
        "omniORB",
        [] {
            CORBA::OctetSeq octets;
            octets.length(sizeof kSomeOctets);
            std::memcpy(octets.get_buffer(), kSomeOctets, sizeof kSomeOctets);
            CORBA::Any any;
            any <<= octets;
            return any;
        },
        [] {
            CORBA::Any any;
            any <<= static_cast<CORBA::Long>(kSomeNumber);
            return any;
        });
});

} // namespace
