#include "ZORNotification.h"

ZOR_IMPLEMENT_CLASS(ZORNotification, ZORKindImplementation, ZORBaseUnknown)

ZORNotification::ZORNotification([[maybe_unused]] int iNone) {}

ZORNotification::~ZORNotification() = default;
