// Keeps two settings in the settings file "Workshop", reads them back and removes one.

#include "CreateServices.h"

#include <iostream>

int main()
{
    ZORIDuxServices_var services = CreateServices();
    services->PutSetting("MACHINE", "lathe 4", "Workshop");
    services->PutSetting("OPERATOR", "Ann \"the eye\" Lee", "Workshop");

    for (const ZORUnicodeString& name : services->ListOfSettingVariables("Workshop"))
        std::cout << name << " is " << services->GetSetting(name, "Workshop") << '\n';

    services->RemoveSetting("OPERATOR", "Workshop");
    if (services->GetSetting("OPERATOR", "Workshop").IsEmpty())
        std::cout << "OPERATOR is gone\n";
}
