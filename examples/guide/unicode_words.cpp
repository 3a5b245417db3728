// The word functions for holders of ZORUnicodeString.

#include "ZORDuxStringManagement.h"

#include <cstdlib>
#include <iostream>

int main()
{
    ZORDuxStringManagement strings;
    ZORUnicodeString line = "  plate  bracket bolt ";
    strings.QStrip(&line);
    strings.Upper(&line);
    std::cout << '[' << line << "]\n";

    char* const second = strings.Word(&line, 2);
    std::cout << second << '\n';
    std::free(second);

    // Characters for the string, bytes for the word functions.
    const ZORUnicodeString accented = "élan vital";
    const ZORUnicodeString vital = "vital";
    std::cout << accented.SearchSubString(vital) << " characters before, byte "
              << strings.Pos(&vital, &accented, 1) << '\n';
}
