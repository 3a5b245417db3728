#pragma once

#include "ZORLineFile.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The channels of the process: their switches, the lines they are making, and where lines go.
class TraceChannels
{
public:
    // Never torn down: code that runs at exit may trace. At exit unfinished lines are written, and
    // what is put after that goes out at once.
    static TraceChannels& Instance();

    // Opens a channel and returns its handle, at least 1.
    int Open(const char* iName, std::size_t iRoom);
    // Writes what the channel has left of a line.
    void Close(int iHandle);
    void Put(int iHandle, std::string_view iText) noexcept;

    const int* SwitchOf(int iHandle) const;
    void SetSwitch(const std::string& iName, int iOn);

private:
    struct Channel {
        const int* on;
        std::string line; // not finished yet
    };
    struct AtExit {
        ~AtExit();
    };

    TraceChannels();
    bool IsListed(const std::string& iName) const;
    int& FindSwitch(const std::string& iName);
    Channel* Find(int iHandle) const;
    // Writes the first `iLength` bytes of the channel's line.
    void Write(Channel& ioChannel, std::size_t iLength) noexcept;

    const std::string _SwitchedOn;        // ",NAME,NAME,"
    std::optional<ZORLineFile> _File;     // opened for the first line
    std::map<std::string, int> _Switches; // by name; never removed
    std::vector<std::unique_ptr<Channel>> _Channels;
    bool _Exiting = false;
};
