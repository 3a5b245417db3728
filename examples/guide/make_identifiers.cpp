// Makes identifiers, as text and as octets.

#include "CreateServices.h"

#include <iostream>

int main()
{
    ZORIDuxServices_var services = CreateServices();
    std::cout << services->GetIdentifier() << '\n';

    const _SEQUENCE_octet octets = services->GetOctetIdentifier(); // the characters of another one
    for (int i = 0; i < octets.length(); ++i)
        std::cout << octets[i];
    std::cout << '\n';
}
