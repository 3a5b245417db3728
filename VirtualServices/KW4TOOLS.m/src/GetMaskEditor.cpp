#include "GetMaskEditor.h"

#include "CompanionComponent.h"

ZORIDuxMaskEditor_var GetMaskEditor()
{
    return CompanionComponent<ZORIDuxMaskEditor_var>("DUXMaskEditor");
}
