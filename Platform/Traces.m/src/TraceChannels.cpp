#include "TraceChannels.h"

#include "OpenTraceFile.h"
#include "ZORGetEnv.h"

#include <algorithm>

namespace
{

std::string Listed(const char* iNames)
{
    return iNames && *iNames ? std::string(",") + iNames + "," : std::string();
}

} // namespace

TraceChannels& TraceChannels::Instance()
{
    static TraceChannels* const channels = new TraceChannels;
    static const AtExit atExit;
    return *channels;
}

TraceChannels::TraceChannels() : _SwitchedOn(Listed(ZORGetEnv("ZOR_TRACE"))) {}

TraceChannels::AtExit::~AtExit()
{
    TraceChannels& channels = Instance();
    channels._Exiting = true;
    for (const std::unique_ptr<Channel>& channel : channels._Channels)
        if (channel)
            channels.Write(*channel, channel->line.size());
}

bool TraceChannels::IsListed(const std::string& iName) const
{
    return _SwitchedOn.find("," + iName + ",") != std::string::npos;
}

int& TraceChannels::FindSwitch(const std::string& iName)
{
    const auto [found, isNew] = _Switches.try_emplace(iName, 0);
    if (isNew)
        found->second = IsListed("all") || IsListed(iName);
    return found->second;
}

int TraceChannels::Open(const char* iName, std::size_t iRoom)
{
    auto channel = std::make_unique<Channel>(Channel{&FindSwitch(iName ? iName : ""), {}});
    channel->line.reserve(iRoom);
    const auto free = std::find(_Channels.begin(), _Channels.end(), nullptr);
    const int handle = static_cast<int>(free - _Channels.begin()) + 1;
    if (free != _Channels.end())
        *free = std::move(channel);
    else
        _Channels.push_back(std::move(channel));
    return handle;
}

void TraceChannels::Close(int iHandle)
{
    if (Channel* const channel = Find(iHandle))
        Write(*channel, channel->line.size());
    _Channels[static_cast<std::size_t>(iHandle) - 1].reset();
}

TraceChannels::Channel* TraceChannels::Find(int iHandle) const
{
    if (iHandle < 1 || static_cast<std::size_t>(iHandle) > _Channels.size())
        return nullptr;
    return _Channels[static_cast<std::size_t>(iHandle) - 1].get();
}

const int* TraceChannels::SwitchOf(int iHandle) const
{
    return Find(iHandle)->on;
}

void TraceChannels::SetSwitch(const std::string& iName, int iOn)
{
    FindSwitch(iName) = iOn;
}

void TraceChannels::Put(int iHandle, std::string_view iText) noexcept
{
    Channel* const channel = Find(iHandle);
    if (!channel || !*channel->on)
        return;
    try {
        channel->line.append(iText);
    } catch (...) { // no memory for the line: the text is dropped
        return;
    }
    const std::size_t newline = iText.rfind('\n');
    if (_Exiting)
        Write(*channel, channel->line.size());
    else if (newline != std::string_view::npos)
        Write(*channel, channel->line.size() - iText.size() + newline + 1);
}

void TraceChannels::Write(Channel& ioChannel, std::size_t iLength) noexcept
{
    if (iLength == 0)
        return;
    try {
        if (!_File)
            OpenTraceFile(_File.emplace(), "ZOR_TRACE_FILE");
    } catch (...) { // no memory to tell what went wrong
    }
    _File->Write(ioChannel.line.data(), iLength);
    ioChannel.line.erase(0, iLength);
}
