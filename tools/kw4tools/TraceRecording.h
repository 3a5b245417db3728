#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Records the method trace of the services, whether it is turned on or not. What would have been
// written without the recording is written when it stops. One recording at a time.
//
//     TraceRecording recording;
//     services.ReadStream(file);
//     recording.Stop();
//     for (const TraceRecording::Line& line : recording.Lines()) …
class TraceRecording
{
public:
    class Line
    {
    public:
        Line(std::string_view iText, int iError) : _Text(iText), _Error(iError) {}

        // What the line says of that method ("ZORDuxServices::SeekFile"): the text behind its name,
        // without the end of line. Nothing when the line is another method's.
        std::optional<std::string_view> Of(std::string_view iMethod) const;
        // The error number of the system when the line was written.
        int Error() const { return _Error; }
        const std::string& Text() const { return _Text; }

    private:
        std::string _Text;
        int _Error;
    };

    TraceRecording();
    ~TraceRecording() { Stop(); }
    TraceRecording(const TraceRecording&) = delete;
    TraceRecording& operator=(const TraceRecording&) = delete;

    void Stop();
    const std::vector<Line>& Lines() const { return _Lines; }

private:
    void WriteLines() const;

    int _LevelBefore;
    bool _On = true;
    std::vector<Line> _Lines;
};
