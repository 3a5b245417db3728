#include "ZORIDuxSecurity.h"

ZOR_IMPLEMENT_CLASS(ZORIDuxSecurity, ZORKindInterface, ZORBaseUnknown)

ZORIDuxSecurity::ZORIDuxSecurity() = default;

ZORIDuxSecurity::~ZORIDuxSecurity() = default;
