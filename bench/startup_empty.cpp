// What any C++ program costs.
#include <iostream>

int main()
{
    return std::cout ? 0 : 1;
}
