// An interface, a component that offers it through an adapter, and the query that finds it.

#include "ZORHandle.h"
#include "ZORIContainer.h"
#include "ZORTie.h"

#include <iostream>

namespace
{

// The interface: all that callers know.
class Shape : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    virtual int GetArea() const = 0;
};
ZOR_IMPLEMENT_CLASS(Shape, ZORKindInterface, ZORBaseUnknown)

// The component: it does the work, and need not know the interface.
class Plate : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    Plate(int iWidth, int iHeight) : _Area(iWidth * iHeight) {}
    ~Plate() override { std::cout << "the plate is gone\n"; }
    int Area() const { return _Area; }

private:
    int _Area;
};
ZOR_IMPLEMENT_CLASS(Plate, ZORKindImplementation, ZORBaseUnknown)

// The adapter: shows the interface on plates.
class TIEShapePlate final : public Shape
{
    ZOR_DECLARE_TIE(Shape, Plate)
public:
    int GetArea() const override { return Self()->Area(); }
};
ZORBaseUnknown* CreateTIEShapePlate(ZORBaseUnknown* iObject);
ZOR_IMPLEMENT_TIE(Shape, Plate, ZORKindTie)

// The dictionary: who makes the adapter, from here to the end of the program.
const ZORFillDictionary entry("Plate", "Shape", CreateTIEShapePlate);

} // namespace

int main()
{
    ZORHandle<Shape> shape;
    {
        const auto plate = ZORBaseUnknown_var::Adopt(new Plate(3, 4));
        shape = plate; // asks the plate for the interface
        std::cout << plate->IsA() << " and " << shape->IsA() << ", one object: " << (plate == shape)
                  << '\n';
        const ZORIContainer_var container(plate);
        std::cout << "a container: " << (container ? "yes" : "no") << '\n';
    }
    std::cout << "area " << shape->GetArea() << '\n'; // the adapter keeps its object
}
