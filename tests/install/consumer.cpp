// A program that knows the common services by their installed headers alone.

#include "CreateServices.h"
#include "ZORRaisedError.h"

#include <cstdio>

int main(int iCount, char** iArguments)
{
    if (iCount != 3)
        return 2;
    try {
        const ZORIDuxServices_var services = CreateServices();
        services->PutSetting("DUX_SEARCH_PATH", iArguments[2], "DUXAdmin");
        const ZORUnicodeString path = services->SearchPath(iArguments[1]);
        std::puts(path.ConvertToChar());
        return path.IsEmpty() ? 1 : 0;
    } catch (const ZORRaisedError& raised) {
        std::fprintf(stderr, "%s\n", raised.what());
        return 2;
    }
}
