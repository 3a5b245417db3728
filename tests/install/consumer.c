/* A program in C that binds string functions: by the header, and by name in the library. */

#include "ZORDuxStrings.h"

#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int main(void)
{
    char* const second = word("plate bracket bolt", 2);
    void* const library = dlopen("libKW4TOOLS.so.1", RTLD_NOW | RTLD_NOLOAD);
    void* const address = library ? dlsym(library, "wordpos") : NULL;
    __typeof__(wordpos)* position;
    memcpy(&position, &address, sizeof address);
    if (!second || !address)
        return 1;
    printf("%s %d\n", second, (int)position("bolt", "plate bracket bolt", 1));
    free(second);
    return 0;
}
