#include "GetSecurity.h"

#include "CompanionComponent.h"

ZORIDuxSecurity_var GetSecurity()
{
    return CompanionComponent<ZORIDuxSecurity_var>("DUXSecurity");
}
