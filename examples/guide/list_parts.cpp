// Loads a schema and tells which classes offer an interface of it.
//
//     list_parts SCHEMA INTERFACE

#include "CreateServices.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    ZORIDuxServices_var services = CreateServices();
    try {
        services->LoadSchema(argv[1]);
    } catch (const std::exception& error) {
        std::cout << "there is no such schema: " << error.what() << '\n';
        return 1;
    }
    for (const ZORUnicodeString& name : services->GetDynamicObjList(argv[2]))
        std::cout << name << '\n';
}
