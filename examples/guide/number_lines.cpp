// Numbers the lines of a text file.
//
//     number_lines FILE NEW-FILE

#include "CreateServices.h"

#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    ZORIDuxServices_var services = CreateServices();
    const ZORDuxFileAccess access = services->CheckFile(argv[1]);
    if (!access.readable) {
        std::cout << argv[1] << (access.exists ? " may not be read\n" : " does not exist\n");
        return 1;
    }

    ZORListValZORUnicodeString numbered;
    int number = 0;
    for (const ZORUnicodeString& line : services->ReadStream(argv[1])) // with its line end
        numbered.Append(ZORUnicodeString(std::to_string(++number)) + " " + line);
    if (!services->WriteStream(numbered, argv[2])) {
        std::cout << argv[2] << " was not written\n";
        return 1;
    }
    std::cout << number << " lines\n";
}
