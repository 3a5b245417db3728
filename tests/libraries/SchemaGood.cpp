// A schema library: counts its creations and does what the test asks of it.

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED int creations;
EXPORTED void (*onCreation)();
int creations = 0;
void (*onCreation)() = nullptr;

EXPORTED void* fctCreateGood()
{
    ++creations;
    if (onCreation)
        onCreation();
    return &creations;
}
