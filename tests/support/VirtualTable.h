#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

// The table of virtual operations of a compiled object, by the Itanium C++ ABI: the demangled names
// of the functions that its entries 0 to `iCount` - 1 lead to. A destructor takes two entries.
// Names are looked up in the symbol tables of the loaded libraries (with nm), hidden ones included.
std::vector<std::string> VirtualTable(const void* iObject, std::size_t iCount);

// The entry through which a virtual operation is called, from a pointer to it: what clients compile
// in.
template <class Operation>
std::size_t SlotOf(Operation iOperation)
{
    static_assert(sizeof iOperation == 2 * sizeof(std::uintptr_t), "not a member function");
    std::uintptr_t encoded;
    std::memcpy(&encoded, &iOperation, sizeof encoded);
    return encoded % 2 == 1 ? (encoded - 1) / sizeof(void*) : static_cast<std::size_t>(-1);
}
