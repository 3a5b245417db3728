#pragma once

#include "ZORExport.h"

#include <array>
#include <cstdint>

// A class or interface identifier: 128 bits. A plain value.
//
//     if (object->QueryInterface(SomeInterface::ClassId(), &found) == ZORInterfaceFound) …
//
// Thread rule: as for an int.
struct GUID {
    std::array<std::uint8_t, 16> bytes; // in the byte order of RFC 9562

    // Whether all bytes are equal.
    friend bool operator==(const GUID& iLeft, const GUID& iRight)
    {
        return iLeft.bytes == iRight.bytes;
    }
    friend bool operator!=(const GUID& iLeft, const GUID& iRight) { return !(iLeft == iRight); }
};

// Makes an identifier that no other call, in this process or any other, has made or will make.
// Where the system has no random bits to give, the process is aborted.
// Thread rule: any thread.
ZOR_EXPORT GUID fct_CreateCLSID();

// The kind of a dictionary entry that names a metaobject (see AddDictionary).
ZOR_EXPORT extern const GUID CLSID_ZORMetaClass;
