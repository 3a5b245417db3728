// Builds a bicycle as far as a user may: loads the schema "Bicycle" by name, makes a container for
// a model of it, and asks the site's security component before it adds a part.
//
//     bicycle USER
//
// Neither the schema library nor that of the security component is known to this program: it runs
// without the latter, too.

#include "BicyclePart.h"

#include "CreateServices.h"
#include "GetSecurity.h"
#include "ZORIDuxModel.h"
#include "ZORObject.h"

#include <exception>
#include <iostream>

namespace
{

void Build(const ZORUnicodeString& iUser)
{
    const ZORIDuxServices_var services = CreateServices();
    services->LoadSchema("Bicycle");
    const ZORIDuxSecurity_var security = GetSecurity();
    if (!security)
        std::cout << "Nobody looks after rights here." << std::endl;

    const ZORIContainer_var bicycle = services->CreateSimpleContainer("Assembly", "Bicycle");
    for (const ZORUnicodeString& type : services->GetDynamicObjList("BicyclePart")) {
        if (security && !security->IsAllowed(iUser, "add", type)) {
            std::cout << iUser << " may not add a " << type << std::endl;
            continue;
        }
        const auto part = ZORBaseUnknown_var::Adopt(new ZORObject(type.ConvertToChar(), "Bicycle"));
        bicycle->AddMember(part.Get());
    }

    const ZORIDuxModel_var model(bicycle);
    std::cout << model->GetModelType() << " of the schema " << model->GetSchema() << ", "
              << bicycle->CountMembers() << " kinds of parts:" << std::endl;
    for (int i = 1; i <= bicycle->CountMembers(); ++i) {
        const ZORBaseUnknown_var part = bicycle->GetMember(i);
        const auto face = ZORHandle<BicyclePart>::Adopt(
            static_cast<BicyclePart*>(part->QueryInterface("BicyclePart")));
        std::cout << face->GetCount() << " x " << part->IsA() << std::endl;
    }
}

} // namespace

int main(int iCount, char** iArguments)
{
    if (iCount != 2) {
        std::cerr << "usage: bicycle USER" << std::endl;
        return 2;
    }
    try {
        Build(iArguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "bicycle: " << error.what() << std::endl;
        return 1;
    }
}
