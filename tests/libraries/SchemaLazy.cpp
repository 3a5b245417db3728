// A schema library that loads as long as nobody calls all of it.

extern "C" void nowhereUntilCalled();

extern "C" __attribute__((visibility("default"))) void lazy()
{
    nowhereUntilCalled();
}

extern "C" __attribute__((visibility("default"))) void* fctCreateLazy()
{
    return nullptr;
}
