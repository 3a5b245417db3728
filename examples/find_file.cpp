#include "CreateServices.h"

#include <iostream>

int main(int argc, char** argv)
{
    ZORIDuxServices_var services = CreateServices();
    const ZORUnicodeString path = services->SearchPath(argc > 1 ? argv[1] : "plate.model");
    if (path.IsEmpty())
        return 1; // nowhere
    std::cout << path << '\n';
}
