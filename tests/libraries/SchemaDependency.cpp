// What the library SchemaDependent needs.

extern "C" __attribute__((visibility("default"))) int depended()
{
    return 1;
}
