// Part of a library in ./dev coverage only: writes its counts down.

extern "C" void __gcov_dump();

extern "C" __attribute__((visibility("default"))) void WriteCounts();

void WriteCounts()
{
    __gcov_dump();
}
