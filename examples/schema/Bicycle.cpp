// The schema library of the schema "Bicycle": LoadSchema("Bicycle") finds it as libBicycle.so and
// calls fctCreateBicycle, which makes the classes of the schema known.

#include "BicyclePart.h"

#include "ZORObject.h"
#include "ZORTie.h"

ZOR_IMPLEMENT_CLASS(BicyclePart, ZORKindInterface, ZORBaseUnknown)

namespace
{

// The parts are late types: bare objects, whose adapters below are all there is to them.
using Frame = ZORObject;
using Wheel = ZORObject;

class TIEBicyclePartFrame final : public BicyclePart
{
    ZOR_DECLARE_TIE(BicyclePart, Frame)
public:
    int GetCount() override { return 1; }
};

class TIEBicyclePartWheel final : public BicyclePart
{
    ZOR_DECLARE_TIE(BicyclePart, Wheel)
public:
    int GetCount() override { return 2; }
};

ZORBaseUnknown* CreateTIEBicyclePartFrame(ZORBaseUnknown* iObject);
ZORBaseUnknown* CreateTIEBicyclePartWheel(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(BicyclePart, Frame, ZORKindTie)
ZOR_IMPLEMENT_TIE(BicyclePart, Wheel, ZORKindTie)

} // namespace

// Called again, it does nothing: the entries are made once.
extern "C" ZOR_EXPORT void* fctCreateBicycle()
{
    static const ZORFillDictionary frame("Frame", "BicyclePart", CreateTIEBicyclePartFrame);
    static const ZORFillDictionary wheel("Wheel", "BicyclePart", CreateTIEBicyclePartWheel);
    return BicyclePart::MetaObject();
}
