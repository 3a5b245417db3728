#include "LifeCycleObject.h"

ZOR_IMPLEMENT_CLASS(LifeCycleObject, ZORKindInterface, ZORBaseUnknown)

LifeCycleObject::LifeCycleObject() = default;

LifeCycleObject::~LifeCycleObject() = default;
