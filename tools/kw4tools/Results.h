#pragma once

#include <string_view>

// The results of a command, on standard output. A result that cannot be written (full disk, closed
// pipe) is a Failure.
class Results
{
public:
    // Writes the text and an end of line.
    void Line(std::string_view iText);
    // Writes the bytes as they are.
    void Bytes(std::string_view iBytes);
    // Sees to it that all of it has been written.
    void Flush();
};
