#include "ZORIDuxServices.h"

ZOR_IMPLEMENT_CLASS(ZORIDuxServices, ZORKindInterface, ZORBaseUnknown)

ZORIDuxServices::ZORIDuxServices() = default;

ZORIDuxServices::~ZORIDuxServices() = default;
