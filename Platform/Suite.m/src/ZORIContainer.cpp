#include "ZORIContainer.h"

ZOR_IMPLEMENT_CLASS(ZORIContainer, ZORKindInterface, ZORBaseUnknown)

ZORIContainer::ZORIContainer() = default;

ZORIContainer::~ZORIContainer() = default;
