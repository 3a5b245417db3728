// Makes a model with a container, puts two components into it and takes one out again.

#include "CreateServices.h"
#include "ZORIDuxModel.h"
#include "ZORObject.h"

#include <iostream>

namespace
{

ZORBaseUnknown_var NewPart(const char* iName)
{
    auto* const part = new ZORObject("Part", nullptr); // of the late type "Part"
    part->SetName(iName);
    return ZORBaseUnknown_var::Adopt(part); // the handle is the only owner
}

void Show(const ZORIContainer_var& iContainer)
{
    for (int i = 1; i <= iContainer->CountMembers(); ++i) {
        const ZORBaseUnknown_var member = iContainer->GetMember(i);
        std::cout << i << ": " << member->IsA() << ' '
                  << static_cast<ZORObject*>(member.Get())->GetName() << '\n';
    }
}

} // namespace

int main()
{
    ZORIDuxServices_var services = CreateServices();
    const ZORIContainer_var assembly = services->CreateSimpleContainer("Assembly", "Bicycle");
    const ZORBaseUnknown_var wheel = NewPart("wheel");
    assembly->AddMember(wheel.Get());
    assembly->AddMember(NewPart("frame").Get());
    std::cout << "again: " << assembly->AddMember(wheel.Get()) << '\n'; // a member is one once
    Show(assembly);
    assembly->RemoveMember(wheel.Get());
    Show(assembly);

    const ZORIDuxModel_var model(assembly); // the model behind the container
    std::cout << model->GetModelType() << " of the schema " << model->GetSchema() << '\n';
    std::cout << "same container: " << (model->GetContainer() == assembly) << '\n';
}
