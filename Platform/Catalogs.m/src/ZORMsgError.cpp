#include "ZORMsgError.h"

ZOR_IMPLEMENT_CLASS(ZORMsgError, ZORKindImplementation, ZORInternalError)

ZORMsgError::ZORMsgError() = default;

ZORMsgError::ZORMsgError(const ZORMsgError& iOther) = default;

ZORMsgError::~ZORMsgError() = default;

ZORError* ZORMsgError::CloneSelf()
{
    return new ZORMsgError(*this);
}
