#include "ZORXHContext.h"

namespace
{

thread_local int depth = 0;

} // namespace

ZORXHContext::ZORXHContext()
{
    ++depth;
}

ZORXHContext::~ZORXHContext()
{
    --depth;
}

ZORError& ZORXHContext::Catch(const ZORRaisedError& iRaised)
{
    _Error = &iRaised.Error();
    return *_Error;
}

void ZORXHContext::Flush()
{
    _Error = nullptr;
}

int ZORXHContext::GetDepth()
{
    return depth;
}
