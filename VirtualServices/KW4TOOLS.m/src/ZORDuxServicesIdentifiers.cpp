// The identifier operations of the services.

#include "MethodFrame.h"
#include "ZORDuxServices.h"
#include "ZORUuid.h"

#include <cstring>

ZORUnicodeString ZORDuxServices::GetIdentifier()
{
    MethodFrame frame("ZORDuxServices::GetIdentifier");
    return Guarded(ErrorReport::Short, [&] {
        char text[ZORUuid::kTextSize];
        ZORUuid().UUID_to_chaine(text);
        ZORUnicodeString identifier(text);
        frame.Value("OutUuid", identifier);
        return identifier;
    });
}

_SEQUENCE_octet ZORDuxServices::GetOctetIdentifier()
{
    MethodFrame frame("ZORDuxServices::GetOctetIdentifier");
    return Guarded(ErrorReport::Short, [] {
        char text[ZORUuid::kTextSize];
        ZORUuid().UUID_to_chaine(text);
        const int length = static_cast<int>(std::strlen(text));
        _SEQUENCE_octet octets;
        octets.maximum(length);
        octets.boucle(text, length);
        octets.length(length);
        return octets;
    });
}
