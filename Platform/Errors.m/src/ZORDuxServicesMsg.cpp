#include "ZORDuxServicesMsg.h"

#include <iterator>

ZOR_IMPLEMENT_CLASS(ZORDuxServicesMsg, ZORKindImplementation, ZORInternalError)

namespace
{

const ZORErrDsc kMessages[] = {
    {0x20002, "The component {1} does not offer the interface {2}."},
    {0x20003, "The schema library {1} was not found or cannot be loaded."},
    {0x20004, "The schema library {1} does not define the creation function {2}."},
};

} // namespace

ZORDuxServicesMsg::ZORDuxServicesMsg(unsigned int iId) : ZORInternalError(iId) {}

ZORDuxServicesMsg::ZORDuxServicesMsg(const ZORDuxServicesMsg& iOther) = default;

ZORDuxServicesMsg::~ZORDuxServicesMsg() = default;

ZORError* ZORDuxServicesMsg::CloneSelf()
{
    return new ZORDuxServicesMsg(*this);
}

void ZORDuxServicesMsg::GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable)
{
    *oCount = std::size(kMessages);
    *oTable = kMessages;
}
