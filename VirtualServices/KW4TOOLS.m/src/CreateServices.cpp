#include "CreateServices.h"

#include "GuardedBlock.h"
#include "ServicesErrors.h"
#include "ZORDuxServices.h"

namespace
{

constexpr char kFile[] = "VirtualServices/KW4TOOLS.m/src/CreateServices";
constexpr int kNoInterface = 41;

} // namespace

ZORIDuxServices_var CreateServices()
{
    return Guarded(ErrorReport::Long, [] {
        ZORDuxServices* const object = new ZORDuxServices;
        ZORIDuxServices_var services(static_cast<ZORBaseUnknown*>(object));
        if (object)
            object->Release();
        if (services == ZORBaseUnknown_var())
            RaiseNoInterface("ZORDuxServices", "ZORIDuxServices", kFile, kNoInterface);
        return services;
    });
}
