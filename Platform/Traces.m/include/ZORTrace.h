#pragma once

#include "ZORExport.h"

// A named trace channel: texts are put to it by its number (see traput.h) and go out as whole
// lines.
//
//     ZORTrace trace("DuxSearch", "search paths", 0, "KW4TOOLS", 1024);
//     traput(trace.GetHandle(), 2, "3 directories\n");
//
// The environment variable ZOR_TRACE switches channels on: their names with a comma between, or
// "all". It is read once, when the process first uses a channel. Lines go to standard error, or to
// the end of the file that ZOR_TRACE_FILE names; a file that cannot be opened is told once on
// standard error, where the lines then go.
//
// A line may be put together from several puts. As soon as it is finished it goes to the kernel in
// one write, so nothing that ends the process loses it. What is left of an unfinished one is
// written when its channel goes or the process exits. A line that cannot be written is dropped.
//
// Classes derive from a channel to add a form to its lines; it is not destroyed through a pointer
// to this base.
//
// Thread rule: one thread. Switches and output are process-wide.
class ZOR_EXPORT ZORTrace
{
public:
    // `iName` is the channel's name, byte for byte as ZOR_TRACE gives it (null counts as empty).
    // `iTitle` says what it is about and `iOwner` whose it is, for people who read the code; both
    // may be null and are not kept. `iMode` is 0. `iRoom` is the length of a usual line in bytes:
    // a longer one costs an allocation, and no line is cut. Two channels of one name have a switch
    // in common, but lines of their own.
    ZORTrace(const char* iName, const char* iTitle, int iMode, const char* iOwner, int iRoom);
    // Writes what is left of an unfinished line.
    ~ZORTrace();
    ZORTrace(const ZORTrace&) = delete;
    ZORTrace& operator=(const ZORTrace&) = delete;

    // The number that traput takes; another channel may get it after this one went.
    int GetHandle() const { return _Handle; }
    // Whether the channel is switched on now.
    bool IsOn() const { return *_Switch != 0; }

    // Switches the channels of that name (null counts as empty), those to come as well, on (not 0)
    // or off.
    static void SetSwitch(const char* iName, int iOn);

protected:
    int _Handle;        // what GetHandle returns
    int _LastLevel = 0; // of the last put; a derived class notes it before each
    const int* _Switch; // not 0 while the channel is on; valid as long as the process
};
