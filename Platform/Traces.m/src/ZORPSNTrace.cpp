#include "ZORPSNTrace.h"

#include "OpenTraceFile.h"
#include "TraceLine.h"
#include "ZORGetEnv.h"
#include "ZORLineFile.h"
#include "ZORString.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace
{

constexpr int kBlanksPerScope = 3;

thread_local int depth = 0; // active scopes that are open

// What a process traces and where to. Never torn down: code that runs at exit may trace.
struct Output {
    ZORPSNTraceSink sink = nullptr;
    void* context = nullptr;
    ZORLineFile file;
    bool callLines = ZORGetEnv("ZOR_PSN_TRACE_CALLS") != nullptr;

    Output() { OpenTraceFile(file, "ZOR_PSN_TRACE_FILE"); }

    static Output& Instance()
    {
        static Output* const output = new Output;
        return *output;
    }
};

int LevelFromEnvironment()
{
    const char* const text = ZORGetEnv("ZOR_PSN_TRACE");
    if (!text || !*text)
        return ZORPSNTrace::kOff;
    int level = 0;
    const char* const end = text + std::strlen(text);
    const std::from_chars_result result = std::from_chars(text, end, level);
    if (result.ec == std::errc() && result.ptr == end)
        return level;
    const std::string complaint =
        std::string("ZOR_PSN_TRACE: \"") + text + "\" is not a level (a whole number)\n";
    ZORLineFile().Write(complaint.data(), complaint.size());
    return ZORPSNTrace::kOff;
}

// The line that this thread writes. One that is asked for after the thread's end (static objects of
// the main thread go later than its thread_local ones) is made anew and kept.
TraceLine& ThreadLine()
{
    thread_local TraceLine* line = nullptr;
    struct Ending {
        ~Ending() { delete std::exchange(line, nullptr); }
    };
    if (!line) {
        thread_local const Ending ending;
        line = new TraceLine;
    }
    return *line;
}

// Sends a line and begins a new one.
void Send(TraceLine& ioLine)
{
    if (ioLine.Text().empty())
        return;
    ioLine.Complete();
    Output& output = Output::Instance();
    if (!output.sink) {
        output.file.Write(ioLine.Text().data(), ioLine.Text().size());
        ioLine.Clear();
        return;
    }
    // A sink may trace itself: the thread's line is free for it.
    const std::string text(ioLine.Text());
    ioLine.Clear();
    output.sink(text.data(), text.size(), output.context);
}

} // namespace

std::atomic<int> ZORPSNTrace::_ActiveLevel{LevelFromEnvironment()};

ZORPSNTraceLigne::~ZORPSNTraceLigne() = default;

void ZORPSNTrace::Open(const char* iText)
{
    _Depth = depth;
    if (Output::Instance().callLines)
        WriteCall("> ", iText); // when this raises, the scope was never open
    ++depth;
}

void ZORPSNTrace::Close()
{
    depth = _Depth;
    try {
        if (Output::Instance().callLines && LevelIsActive(_Level))
            WriteCall("< ", nullptr);
    } catch (...) { // a scope also closes while an error is on its way
    }
}

void ZORPSNTrace::WriteCall(const char* iMark, const char* iText)
{
    ZORString text;
    std::ostream& line = GetLigne().GetStream();
    line << Indent(text, GetIndent()) << iMark << _Method;
    if (iText)
        line << ' ' << iText;
    line << '\n';
    Out();
}

int ZORPSNTrace::GetIndent() const
{
    return kBlanksPerScope * (_Open ? _Depth : depth);
}

ZORPSNTraceLigne& ZORPSNTrace::GetLigne()
{
    return ThreadLine();
}

const char* ZORPSNTrace::Indent(ZORString& oText, int iBlanks) const
{
    constexpr std::string_view kBlanks = "                                ";
    oText = "";
    for (int left = iBlanks; left > 0; left -= static_cast<int>(kBlanks.size()))
        oText.Append(kBlanks.data(), std::min(kBlanks.size(), static_cast<std::size_t>(left)));
    return oText.ConvertToChar();
}

const char* ZORPSNTrace::GetMethod(ZORString& oText) const
{
    oText = _Method;
    return oText.ConvertToChar();
}

void ZORPSNTrace::WriteLine(std::initializer_list<std::string_view> iPieces)
{
    TraceLine& line = ThreadLine();
    line.AppendBlanks(static_cast<std::size_t>(GetIndent()) + kBlanksPerScope);
    line.Append(_Method);
    line.Append(" ");
    for (const std::string_view piece : iPieces)
        line.Append(piece);
    line.Append("\n");
    Send(line);
}

void ZORPSNTrace::Out()
{
    Send(ThreadLine());
}

void ZORPSNTrace::SetActiveLevel(int iLevel)
{
    _ActiveLevel.store(iLevel, std::memory_order_relaxed);
}

int ZORPSNTrace::GetActiveLevel()
{
    return _ActiveLevel.load(std::memory_order_relaxed);
}

bool ZORPSNTrace::SetFile(const char* iPath)
{
    if (iPath && *iPath)
        return Output::Instance().file.Open(iPath);
    Output::Instance().file.Close();
    return true;
}

void ZORPSNTrace::SetSink(ZORPSNTraceSink iSink, void* iContext)
{
    Output::Instance().sink = iSink;
    Output::Instance().context = iContext;
}

void ZORPSNTrace::SetCallLines(bool iOn)
{
    Output::Instance().callLines = iOn;
}
