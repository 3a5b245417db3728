#include "ZORDuxServices.h"

#include "MethodFrame.h"
#include "TIELifeCycleObjectZORDuxServices.h"
#include "TIEZORIDuxServicesZORDuxServices.h"

ZOR_IMPLEMENT_CLASS(ZORDuxServices, ZORKindImplementation, ZORBaseUnknown)

ZORDuxServices::ZORDuxServices() : _TheSettingSeparator(":")
{
    const MethodFrame frame("ZORDuxServices::ZORDuxServices");
}

ZORDuxServices::ZORDuxServices(const ZORDuxServices&)
    : ZORBaseUnknown() // the separator stays empty: makers of copies set their own
{
    const MethodFrame frame("ZORDuxServices::ZORDuxServices (ZORDuxServices)");
}

ZORDuxServices& ZORDuxServices::operator=(const ZORDuxServices&)
{
    const MethodFrame frame("ZORDuxServices::operator=");
    return *this;
}

ZORDuxServices::~ZORDuxServices()
{
    try {
        const MethodFrame frame("ZORDuxServices::~ZORDuxServices");
    } catch (...) { // what the trace raises does not leave a destructor
    }
}

ZORBaseUnknown* ZORDuxServices::CreateItself()
{
    return nullptr;
}

void ZORDuxServices::remove()
{
    const MethodFrame frame("ZORDuxServices::remove");
}

// Found by queries as soon as the library is loaded, withdrawn when it is unloaded.
static const ZORFillDictionary lifeCycleEntry("ZORDuxServices", "LifeCycleObject",
                                              CreateTIELifeCycleObjectZORDuxServices);
static const ZORFillDictionary servicesEntry("ZORDuxServices", "ZORIDuxServices",
                                             CreateTIEZORIDuxServicesZORDuxServices);
