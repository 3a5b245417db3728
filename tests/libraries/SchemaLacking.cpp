// A schema library of whose functions and variables some are nowhere, and of which nothing may run:
// it ends the process that starts it.

#include <cstdlib>

extern "C" void nowhereFunction();
extern "C" int nowhereVariable;
extern "C" __attribute__((weak)) void nowhereButOptional();
namespace site
{
int Nowhere(const char*);
}

namespace
{

__attribute__((constructor)) void Start()
{
    std::_Exit(99);
}

} // namespace

extern "C" void resolved() {}

extern "C" void (*ResolverOfChosen())()
{
    std::_Exit(98);
}
extern "C" void chosen() __attribute__((ifunc("ResolverOfChosen")));

extern "C" __attribute__((visibility("default"))) void* fctCreateLacking()
{
    nowhereFunction();
    nowhereFunction();
    if (nowhereButOptional)
        nowhereButOptional();
    chosen();
    return site::Nowhere("") == 0 ? &nowhereVariable : nullptr;
}
