// A schema library that relies on the libraries of the program that loads it.

#include "CreateServices.h"

extern "C" ZOR_EXPORT void* fctCreateHosted()
{
    static const ZORIDuxServices_var services = CreateServices();
    return services.Get();
}
