#pragma once

#include "ZORBaseUnknown.h"
#include "ZORHandle.h"
#include "ZORTrace.h"

#include <iosfwd>

class ZORUnicodeString;

// An indented trace: lines under the name of a channel, deeper for each function block that is open
// (see ZORDuxTraceStep), and a report of every block that was entered.
//
//     char name[] = "DuxSearch";
//     ZORDuxTrace trace(name, nullptr, nullptr, 2);
//     trace.FunctionBegin("Search");
//     trace << "directories: " << 3 << '\n';
//     trace.FunctionEnd();
//
// With ZOR_TRACE=DuxSearch this writes, where ZORTrace writes:
//
//     DuxSearch        Search() {
//     DuxSearch        : directories: 3
//     DuxSearch        }
//
// A line is the channel's name in a field of 16 bytes (a longer name is cut to its first 16) and a
// blank, the detail level where DUX_TRACE_LEVEL asks for it ("%04d" and a blank), ": " for each
// open block, and the text.
//
// The environment is read by the first object of the process, and never again:
// - DUX_TRACE_REPORT, the coverage report: this file, emptied first, gets a line for each trace
//   that is made and each block that is entered, shown or not. Whether it could be opened is told
//   on standard error. Each line goes to the kernel whole.
// - DUX_TRACE_COLOR, set to anything, with TERM=aixterm: names in cyan.
// - DUX_TRACE_LEVEL, set to anything: lines carry the detail level.
// - DUX_TRACE_DEBUG, set to anything: _gTraceFunction becomes 1, for other modules to read.
//
// When the last trace goes the report gets its last line, the number of traces ever made, and is
// closed for good: traces made later write nothing to it.
//
// Whether output is shown is decided when the object is made (its channel is on) and by its levels
// (see IsShown). What is not shown leaves no text, but blocks are counted and reported all the
// same.
//
// After its construction, which may find no memory (std::bad_alloc), no operation fails or raises:
// on a full disk lines are dropped and the program goes on.
//
// Thread rule: one thread. The state below is process-wide: blocks opened on one channel indent the
// lines of all.
class ZOR_EXPORT ZORDuxTrace : public ZORTrace
{
public:
    // `iName` is the channel's name (null counts as empty); `iSecond` and `iThird` go to ZORTrace
    // as its title and owner and may be null. `iLevel` is the level that IsShown compares.
    ZORDuxTrace(char* iName, char* iSecond, char* iThird, int iLevel);
    // Ends the report when this is the last trace.
    ~ZORDuxTrace();
    ZORDuxTrace(const ZORDuxTrace&) = delete;
    ZORDuxTrace& operator=(const ZORDuxTrace&) = delete;

    // Opens a block: writes "iFunction() {" and, when shown, indents what follows. Null counts as
    // empty.
    void FunctionBegin(const char* iFunction);
    // Closes the innermost block: writes "}", as deep as its opening line.
    void FunctionEnd();

    // Shows what is written from now on only when this trace's level is at least `iLevel`; puts are
    // made at that level as well. At first the detail level is 0 and puts are made at 2.
    void SetDetailLevel(int iLevel);
    // Whether output is shown: the channel was on when this object was made and the level reaches
    // the detail level.
    bool IsShown() const;

    // Begins a line when the one before is finished: name, level and depth.
    void Header();

    // The current trace: null until some module sets _gTrace.
    static ZORDuxTrace* Current();

    // Each writes its argument, when output is shown, and returns this trace.
    //
    // A text: a newline at its beginning ends the line (an empty one gets its header, too) and the
    // rest goes on after it; one at its end ends the line; any other is written as it is. The empty
    // text and null write nothing.
    ZORDuxTrace& operator<<(const char* iText);
    ZORDuxTrace& operator<<(const ZORUnicodeString& iText);
    // A character; a newline ends the line.
    ZORDuxTrace& operator<<(char iCharacter);
    // A number, in decimal.
    ZORDuxTrace& operator<<(int iNumber);
    ZORDuxTrace& operator<<(long iNumber);
    // A number without its fraction: 2.9 is written as 2 and -2.9 as -2. One that no long can hold
    // is written as the nearest long, and what is not a number as 0.
    ZORDuxTrace& operator<<(double iNumber);
    // A pointer, as "%p" writes it. A component, whose reference count does not change, is written
    // as its pointer.
    ZORDuxTrace& operator<<(const void* iPointer);
    ZORDuxTrace& operator<<(const ZORBaseUnknown* iComponent);
    ZORDuxTrace& operator<<(const ZORBaseUnknown_var& iComponent);

    static int _gInit;           // 1 once the environment has been read
    static int _gLevel;          // depth of open blocks that are shown, less one
    static ZORDuxTrace* _gTrace; // set by whoever wants a current trace; not owned

private:
    ZOR_HIDDEN static void Initialise();
    ZOR_HIDDEN void BuildHeader(const char* iName);
    ZOR_HIDDEN void Put(const char* iText);
    ZOR_HIDDEN ZORDuxTrace& WriteNumber(long iNumber);

    char* _Header;
    int _HeaderLength;
    int _Active;
    int _LineStart;
    int _PutLevel;
    int _DetailLevel;
    int _Level;
};

extern ZOR_EXPORT int TraceStackHead;      // depth of all open blocks, less one
extern ZOR_EXPORT int _gPrintLevelFlag;    // 1: lines carry the detail level
extern ZOR_EXPORT int _gAixterm;           // 1: names are coloured
extern ZOR_EXPORT int _gTraceFunction;     // 1: DUX_TRACE_DEBUG is set
extern ZOR_EXPORT std::ofstream* _gReport; // the coverage report, or null; what is written to it
                                           // goes out line by line, flushed or not
extern ZOR_EXPORT int _gCoverageReport;    // 1 once the report was opened; stays 1
extern ZOR_EXPORT int _gTraceNumber;       // traces alive
extern ZOR_EXPORT int _gTraceTotalNumber;  // traces ever made
extern ZOR_EXPORT char BufferAgile[1024];  // scratch of every trace, changed by any operation
