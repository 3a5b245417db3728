#include "ZORInternalError.h"

ZOR_IMPLEMENT_CLASS(ZORInternalError, ZORKindImplementation, ZORError)

ZORInternalError::ZORInternalError(unsigned int iId) : ZORError(iId) {}

ZORInternalError::ZORInternalError(const ZORInternalError& iOther) = default;

ZORInternalError::~ZORInternalError() = default;

ZORError* ZORInternalError::CloneSelf()
{
    return new ZORInternalError(*this);
}
