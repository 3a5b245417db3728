#include "CreateServices.h"

#include "GuardedBlock.h"
#include "ServicesErrors.h"
#include "ZORDuxServices.h"

ZORIDuxServices_var CreateServices()
{
    return Guarded(ErrorReport::Long, [] {
        constexpr char kFile[] = "VirtualServices/KW4TOOLS.m/src/CreateServices";
        constexpr int kNoInterface = 41;
        const auto object = ZORBaseUnknown_var::Adopt(new ZORDuxServices);
        ZORIDuxServices_var services(object);
        if (services == ZORBaseUnknown_var())
            RaiseNoInterface("ZORDuxServices", "ZORIDuxServices", kFile, kNoInterface);
        return services;
    });
}
