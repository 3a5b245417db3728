#include "TraceRecording.h"

#include "ServicesTrace.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <ostream>

namespace
{

using Lines = std::vector<TraceRecording::Line>;

void Record(const char* iLine, std::size_t iLength, void* ioLines)
{
    const int error = errno;
    static_cast<Lines*>(ioLines)->emplace_back(std::string_view(iLine, iLength), error);
    errno = error;
}

} // namespace

std::optional<std::string_view> TraceRecording::Line::Of(std::string_view iMethod) const
{
    std::string_view text = _Text;
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (text.substr(0, iMethod.size()) != iMethod || text.substr(iMethod.size(), 1) != " ")
        return std::nullopt;
    text.remove_prefix(iMethod.size() + 1);
    if (!text.empty() && text.back() == '\n')
        text.remove_suffix(1);
    return text;
}

TraceRecording::TraceRecording() : _LevelBefore(ZORPSNTrace::GetActiveLevel())
{
    ZORPSNTrace::SetSink(Record, &_Lines);
    TurnServicesTraceOn();
}

void TraceRecording::Stop()
{
    if (!_On)
        return;
    _On = false;
    ZORPSNTrace::SetSink(nullptr, nullptr);
    ZORPSNTrace::SetActiveLevel(_LevelBefore);
    if (ZORPSNTrace::LevelIsActive(kServicesTraceLevel))
        WriteLines();
}

// Each line again, as a line of a scope that writes nothing of its own.
void TraceRecording::WriteLines() const
{
    ZORPSNTrace scope("kw4tools", std::numeric_limits<int>::max(), nullptr);
    for (const Line& line : _Lines) {
        scope.GetLigne().GetStream() << line.Text();
        scope.Out();
    }
}
