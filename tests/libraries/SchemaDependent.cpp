// A schema library that needs another one, which the loader does not find.

extern "C" int depended();

extern "C" __attribute__((visibility("default"))) void* fctCreateDependent()
{
    static int result = depended();
    return &result;
}
