// Opens and closes periods of work in memory.

#include "ObjInMemory.h"

#include <iostream>

int main()
{
    std::cout << "opened: " << ObjInMemory::SetWorkInMemory() << '\n';
    std::cout << "again: " << ObjInMemory::SetWorkInMemory() << '\n'; // periods do not nest
    std::cout << "period: " << ObjInMemory::WorkInMemory() << '\n';
    ObjInMemory::UnsetWorkInMemory();
    std::cout << "closed: " << ObjInMemory::WorkInMemory() << '\n';
    ObjInMemory::SetWorkInMemory();
    std::cout << "period: " << ObjInMemory::WorkInMemory() << '\n';
}
