#include "ZORGetEnv.h"

#include <cstdlib>

const char* ZORGetEnv(const char* iName)
{
    return iName ? std::getenv(iName) : nullptr;
}
