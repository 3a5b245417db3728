// What the library SchemaDependent needs.

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED int depended()
{
    return 1;
}

// A creation function for whoever depends on this library.
EXPORTED void* fctCreateInner()
{
    return nullptr;
}
