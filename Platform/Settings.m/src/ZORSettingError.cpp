#include "ZORSettingError.h"

ZOR_IMPLEMENT_CLASS(ZORSettingError, ZORKindImplementation, ZORInternalError)

ZORSettingError::ZORSettingError() = default;

ZORSettingError::ZORSettingError(const ZORSettingError& iOther) = default;

ZORSettingError::~ZORSettingError() = default;

ZORError* ZORSettingError::CloneSelf()
{
    return new ZORSettingError(*this);
}
