#pragma once

#include <cstdint>

// What a process may do with a file: each field is 1 for yes and 0 for no. The layout is part of
// the binary interface.
struct ZORDuxFileAccess {
    std::int32_t exists;
    std::int32_t readable;
    std::int32_t writable;
    std::int32_t executable; // for a directory: may be searched
};
