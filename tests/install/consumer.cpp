// A program that knows the common services by their installed headers alone. It loads the schema
// that it is given, or searches for a file (the second argument is the search path).

#include "CreateServices.h"
#include "ZORLoadExternalSchema.h"
#include "ZORRaisedError.h"

#include <cstdio>

int main(int iCount, char** iArguments)
{
    if (iCount != 2 && iCount != 3)
        return 2;
    try {
        if (iCount == 2)
            return ZORLoadExternalSchema(iArguments[1], nullptr) ? 0 : 1;
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
