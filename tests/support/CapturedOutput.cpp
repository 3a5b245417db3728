#include "CapturedOutput.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <unistd.h>

namespace
{

void FlushAll()
{
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

} // namespace

CapturedOutput::CapturedOutput(int iDescriptor) : _Descriptor(iDescriptor)
{
    FlushAll();
    std::string pattern = "/tmp/kw4tools-output-XXXXXX";
    _File = mkstemp(pattern.data());
    if (_File < 0)
        throw std::runtime_error("cannot make a file like " + pattern);
    unlink(pattern.c_str());
    _Saved = dup(_Descriptor);
    dup2(_File, _Descriptor);
}

CapturedOutput::~CapturedOutput()
{
    FlushAll();
    dup2(_Saved, _Descriptor);
    close(_Saved);
    close(_File);
}

std::string CapturedOutput::Text() const
{
    FlushAll();
    std::string text(static_cast<std::size_t>(lseek(_File, 0, SEEK_END)), '\0');
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t got =
            pread(_File, text.data() + done, text.size() - done, static_cast<off_t>(done));
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return text;
}
