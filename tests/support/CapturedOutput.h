#pragma once

#include <string>

// Takes what the process writes to a file descriptor (1 or 2) until Text() or the end of the scope.
// Works for output by any road: streams of C and C++ and plain writes.
class CapturedOutput
{
public:
    explicit CapturedOutput(int iDescriptor);
    ~CapturedOutput();
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    // All that was written so far; the capture goes on.
    std::string Text() const;

private:
    int _Descriptor;
    int _Saved;
    int _File;
};
