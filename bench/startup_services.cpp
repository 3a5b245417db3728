// Loads both libraries and makes the first services object.
#include "CreateServices.h"

#include <iostream>

int main()
{
    return std::cout && CreateServices() ? 0 : 1;
}
