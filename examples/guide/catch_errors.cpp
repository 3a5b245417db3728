// Raises errors of the services and its own, and catches them.

#include "CreateServices.h"
#include "ZORDUXNLSError.h"
#include "ZORDuxServicesMsg.h"
#include "ZORRaisedError.h"

#include <iostream>

namespace
{

void Tell(const ZORRaisedError& iRaised)
{
    ZORError& error = iRaised.Error();
    std::cout << "class:   " << error.IsA() << '\n'
              << "text:    " << error.GetMessage(0) << '\n'
              << "raised:  " << error.GetFile() << ", line " << error.GetLine() << '\n';
    if (error.IsAKindOf(ZORDuxServicesMsg::ClassName()))
        std::cout << "library: " << error.GetParameter(1) << '\n';
}

void CheckPart(const char* iPart)
{
    auto* const error = new ZORDuxServicesMsg; // Throw takes over this reference
    error->SetText(ZORUnicodeString("the part ") + iPart + " has no name");
    error->Throw("Workshop/Parts", 17);
}

} // namespace

int main()
{
    ZORIDuxServices_var services = CreateServices();
    try {
        services->LoadSchema("Rocket"); // tells the error on standard error as well
    } catch (const ZORRaisedError& raised) {
        Tell(raised);
    }
    try {
        services->GetSetting("MACHINE", ""); // a file name must not be empty
    } catch (const ZORRaisedError& raised) {
        Tell(raised);
    }
    try {
        CheckPart("plate");
    } catch (const std::exception& error) { // what any C++ code can do
        std::cout << error.what() << '\n';
    }
}
