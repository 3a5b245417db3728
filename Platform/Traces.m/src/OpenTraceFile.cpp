#include "OpenTraceFile.h"

#include "ZORGetEnv.h"
#include "ZORLineFile.h"

#include <cerrno>
#include <cstring>
#include <string>

void OpenTraceFile(ZORLineFile& ioFile, const char* iVariable)
{
    const int before = errno;
    const char* const path = ZORGetEnv(iVariable);
    if (path && *path && !ioFile.Open(path)) {
        const std::string complaint =
            std::string(iVariable) + ": cannot open " + path + ": " + std::strerror(errno) + "\n";
        ioFile.Write(complaint.data(), complaint.size());
    }
    errno = before;
}
