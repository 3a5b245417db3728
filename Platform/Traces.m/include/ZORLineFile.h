#pragma once

#include "ZORExport.h"

#include <atomic>
#include <cstddef>

// A file that lines are added to, each in one write at the file's end: a process that is killed
// leaves no half line, and two processes that write to one file never mix inside a line.
//
//     ZORLineFile log;
//     if (!log.Open("/var/log/suite/trace"))
//         std::perror("/var/log/suite/trace");        // lines go to standard error
//     log.Write("ready\n", 6);
//
// A line that cannot be written (the disk is full, say) is dropped, and the program goes on. The
// signals that a write may bring, SIGPIPE where a pipe has no reader any more and SIGXFSZ beyond
// the limit of a file's size, end a program that does not ignore them, as they do with any other
// write. Where the kernel took a part of a line, the next one begins with a newline of its own.
//
// Thread rule: several threads may write at the same time; opening and closing are for one thread.
class ZOR_EXPORT ZORLineFile
{
public:
    // Standard error, until a file is opened.
    ZORLineFile();
    // Closes the file. Standard error stays open.
    ~ZORLineFile();
    ZORLineFile(const ZORLineFile&) = delete;
    ZORLineFile& operator=(const ZORLineFile&) = delete;

    // Goes on to that file, made when missing and closed on exec; `iTruncate` empties it first.
    // Returns false, with errno set and lines going where they went before, when that fails.
    // REQUIRES: `iPath` is not null.
    bool Open(const char* iPath, bool iTruncate = false);
    // Goes back to standard error.
    void Close();

    // Writes a text, one or more whole lines, in one call of the kernel, or in several when it
    // takes less at once. errno is left as it was.
    void Write(const char* iText, std::size_t iLength);

private:
    int _Descriptor;
    std::atomic<bool> _Torn{false}; // the file ends in a part of a line
};
