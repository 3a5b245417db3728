// Asks the site's security component whether a user may do something.
//
//     ask_security USER ACTION OBJECT

#include "GetSecurity.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    try {
        const ZORIDuxSecurity_var security = GetSecurity();
        if (!security) {
            std::cout << "nobody looks after rights here\n";
            return 1;
        }
        std::cout << (security->IsAllowed(argv[1], argv[2], argv[3]) ? "yes" : "no") << '\n';
    } catch (const std::exception&) { // told on standard error already
        return 2;
    }
}
