#include "ZORTrace.h"

#include "TraceChannels.h"

#include <algorithm>

namespace
{

constexpr int kMostRoom = 1 << 16; // set aside for a line beforehand

} // namespace

ZORTrace::ZORTrace(const char* iName, [[maybe_unused]] const char* iTitle,
                   [[maybe_unused]] int iMode, [[maybe_unused]] const char* iOwner, int iRoom)
    : _Handle(TraceChannels::Instance().Open(
          iName, static_cast<std::size_t>(std::clamp(iRoom, 0, kMostRoom)))),
      _Switch(TraceChannels::Instance().SwitchOf(_Handle))
{
}

ZORTrace::~ZORTrace()
{
    TraceChannels::Instance().Close(_Handle);
}

void ZORTrace::SetSwitch(const char* iName, int iOn)
{
    TraceChannels::Instance().SetSwitch(iName ? iName : "", iOn);
}
