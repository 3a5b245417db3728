#pragma once

#include "ZORExport.h"

#include <atomic>
#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <string_view>

class ZORString;

// Receives a finished line of the method trace, its end of line included. What it raises goes on to
// the traced method, but for what it raises while a scope closes: that is dropped.
using ZORPSNTraceSink = void (*)(const char* iLine, std::size_t iLength, void* iContext);

// The line of the method trace that a thread is writing: text for its stream, sent by
// ZORPSNTrace::Out.
class ZOR_EXPORT ZORPSNTraceLigne
{
public:
    virtual ~ZORPSNTraceLigne();
    // Takes the text of the line. Flushing it sends nothing: lines go out whole.
    virtual std::ostream& GetStream() = 0;
};

// The method trace: a scope that a method opens on entry, and the lines it writes while the scope's
// level is active.
//
//     ZORPSNTrace trace("ZORDuxServices::GetSetting", 42, nullptr);
//     if (ZORPSNTrace::LevelIsActive(trace.GetLevel())) {
//         ZORString text;
//         std::ostream& line = trace.GetLigne().GetStream();
//         line << trace.Indent(text, trace.GetIndent() + 3);
//         line << trace.GetMethod(text) << " iFileName = plate.model" << std::endl;
//         trace.Out();
//     }
//
// or, for texts, trace.WriteLine({"iFileName = ", …}).
//
// The environment variable ZOR_PSN_TRACE=<level> turns on every scope of at most that level, from
// the start of the process; ZOR_PSN_TRACE_FILE sends the lines to the end of that file instead of
// to standard error. With ZOR_PSN_TRACE_CALLS set (to anything) each active scope also writes a
// line when it opens and one when it closes. Each line reaches the kernel whole, in one write. A
// file that cannot be opened is told once on standard error, where the lines then go.
//
// A scope that is not active costs one load and one branch.
// Thread rule: any thread may trace; depth and line are each thread's own. Level, file and sink are
// process-wide and are set while no other thread traces.
class ZOR_EXPORT ZORPSNTrace
{
public:
    // Opens a scope. `iMethod` is kept as a pointer and must outlive the scope. `iText`, when not
    // null, ends the line that ZOR_PSN_TRACE_CALLS writes on opening.
    ZORPSNTrace(const char* iMethod, int iLevel, const char* iText)
        : _Method(iMethod), _Level(iLevel), _Open(LevelIsActive(iLevel))
    {
        if (_Open)
            Open(iText);
    }
    // The same without a text; `iNone` is 0.
    ZORPSNTrace(const char* iMethod, int iLevel, [[maybe_unused]] int iNone)
        : ZORPSNTrace(iMethod, iLevel, static_cast<const char*>(nullptr))
    {
    }
    ~ZORPSNTrace()
    {
        if (_Open)
            Close();
    }
    ZORPSNTrace(const ZORPSNTrace&) = delete;
    ZORPSNTrace& operator=(const ZORPSNTrace&) = delete;

    // Whether scopes of that level write.
    static bool LevelIsActive(int iLevel)
    {
        return iLevel <= _ActiveLevel.load(std::memory_order_relaxed);
    }

    // The scope's level, as given at construction.
    int GetLevel() const { return _Level; }
    // The scope's own indentation in blanks: three for each active scope around it.
    int GetIndent() const;
    // This thread's line. Begin a line only to send it with Out.
    ZORPSNTraceLigne& GetLigne();
    // Makes `oText` that many blanks (none for a negative number) and returns its characters.
    const char* Indent(ZORString& oText, int iBlanks) const;
    // Makes `oText` the method's name and returns its characters.
    const char* GetMethod(ZORString& oText) const;
    // Writes a line of its own kind, and sends it: indented by three more than the scope, the
    // method's name, a blank, and the pieces one behind the other. The same as by way of GetLigne
    // and Out, with less to do.
    void WriteLine(std::initializer_list<std::string_view> iPieces);
    // Sends this thread's line and begins a new one. An empty line sends nothing.
    void Out();

    // The level at which no scope is active.
    static constexpr int kOff = -0x7fffffff - 1;
    // Turns on the scopes of at most that level; kOff turns all off. Scopes that are open already
    // follow at their next line.
    static void SetActiveLevel(int iLevel);
    // The level that was set last, by the program or the environment; kOff when by neither.
    static int GetActiveLevel();
    // Sends lines to the end of that file (made when missing), or to standard error for null or
    // empty. Returns false, with lines going where they went before, when it cannot be opened.
    static bool SetFile(const char* iPath);
    // Gives lines to a function instead, each with `iContext`, which may be null and is not owned;
    // a null function goes back to file or standard error.
    static void SetSink(ZORPSNTraceSink iSink, void* iContext);
    // Whether active scopes write a line when they open and when they close.
    static void SetCallLines(bool iOn);

private:
    void Open(const char* iText);
    void Close();
    ZOR_HIDDEN void WriteCall(const char* iMark, const char* iText);

    static std::atomic<int> _ActiveLevel;

    const char* _Method;
    int _Level;
    int _Depth = 0; // active scopes around this one
    bool _Open;
};
