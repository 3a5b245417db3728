#pragma once

#include "ZORLineFile.h"

#include <fstream>
#include <streambuf>
#include <string>

// The stream of the coverage report. Sends each line to the file as soon as it is finished, in one
// write at the file's end; flushing sends nothing. A line that cannot be written is dropped, and
// the stream stays good. What is left of a line in the last report that was made goes out when the
// process exits.
class CoverageReport final : public std::ofstream
{
public:
    // Empties the file, made when missing. On failure the stream's failbit is set.
    explicit CoverageReport(const char* iPath);
    // Sends what is left of an unfinished line.
    ~CoverageReport() override;

private:
    class Lines final : public std::streambuf
    {
    public:
        ~Lines() override;

        bool Open(const char* iPath) { return _File.Open(iPath, true); }
        void SendRest() { Send(_Line.size()); }

    private:
        int_type overflow(int_type iCharacter) override;
        std::streamsize xsputn(const char* iText, std::streamsize iCount) override;
        void Send(std::size_t iLength);

        ZORLineFile _File;
        std::string _Line;
        bool _Lost = false; // what comes up to the next line break
    };

    struct AtExit {
        ~AtExit();
    };

    static CoverageReport* _Last; // null once it is closed

    Lines _Lines;
};
