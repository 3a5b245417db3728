#pragma once

#include <cstdint>

// What a process may do with a file: each field is 1 for yes and 0 for no.
//
//     const ZORDuxFileAccess access = services->CheckFile("/site/models/plate.model");
//     if (access.exists && !access.writable) …
//
// The layout is part of the binary interface. Thread rule: as for an int.
struct ZORDuxFileAccess {
    std::int32_t exists;     // a symbolic link counts as what it leads to
    std::int32_t readable;   // for a directory: may be listed
    std::int32_t writable;   // for a directory: files may be made and removed in it
    std::int32_t executable; // for a directory: may be searched
};
