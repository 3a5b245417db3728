#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

// The lines of a file, one after the other, with their line ends and any bytes in them.
//
//     LineReader reader("-");
//     while (reader.Next())
//         … reader.Line() …
class LineReader
{
public:
    // "-" is standard input. A Failure when the file cannot be opened.
    explicit LineReader(const std::string& iFile);
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    // Goes to the next line; false at the end. A Failure when the file cannot be read.
    bool Next();
    // The line; valid until Next is called again.
    std::string_view Line() const { return {_Line, _Length}; }
    // "line 7 of standard input", for messages.
    std::string Place() const;

private:
    std::string _Name;
    std::FILE* _File;
    char* _Line = nullptr;
    std::size_t _Room = 0;
    std::size_t _Length = 0;
    std::size_t _Number = 0;
};
