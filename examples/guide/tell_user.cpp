// Tells the user of a locked part, in the user's language.

#include "ZORDUXNLSError.h"
#include "ZORDuxMessenger.h"
#include "ZORHandle.h"

#include <iostream>

int main()
{
    ZORDuxMessenger* const messenger = GetDuxMessenger();
    messenger->Set("CDA_W_0001"); // of the family CDA, and a warning
    messenger->Add("plate");
    messenger->Add("ann");

    ZORUnicodeString text;
    messenger->GetShortMsg(text);
    std::cout << text << '\n';
    messenger->GetLongMsg(text);
    std::cout << text << '\n';
    std::cout << (messenger->Ier() == 2 ? "a warning" : "no warning") << '\n';

    // The same text as that of an error; a place takes the parameter of its number.
    const auto error = ZORHandle<ZORDUXNLSError>::Adopt(new ZORDUXNLSError);
    ZORUnicodeString parameters[] = {"plate", "ann"};
    error->SetNLSMsg("ZORDUXCdaErrorMsg", "CDA_W_0001.Short", 2, parameters);
    std::cout << error->GetMessage() << '\n';
}
