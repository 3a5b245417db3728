#pragma once

#include "ZORExport.h"

#include <array>
#include <cstdint>
#include <cstring>

// A class or interface identifier: 128 bits. A plain value.
//
//     void* found = nullptr;
//     if (object->QueryInterface(SomeInterface::ClassId(), &found) == ZORInterfaceFound)
//         static_cast<SomeInterface*>(found)->Release();
//
// Thread rule: as for an int.
struct GUID {
    std::array<std::uint8_t, 16> bytes; // in the byte order of RFC 9562

    // Whether all bytes are equal.
    friend bool operator==(const GUID& iLeft, const GUID& iRight)
    {
        return iLeft.Half(0) == iRight.Half(0) && iLeft.Half(8) == iRight.Half(8);
    }
    friend bool operator!=(const GUID& iLeft, const GUID& iRight) { return !(iLeft == iRight); }

private:
    // Eight of the bytes as one word.
    std::uint64_t Half(std::size_t iFirst) const
    {
        std::uint64_t word;
        std::memcpy(&word, bytes.data() + iFirst, sizeof word);
        return word;
    }
};

// Makes an identifier that no other call, in this process or any other, has made or will make.
// Where the system has no random bits to give, the process is aborted.
// Thread rule: any thread.
ZOR_EXPORT GUID fct_CreateCLSID();

// The kind of a dictionary entry that names a metaobject (see AddDictionary).
ZOR_EXPORT extern const GUID CLSID_ZORMetaClass;
