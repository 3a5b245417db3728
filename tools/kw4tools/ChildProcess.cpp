#include "ChildProcess.h"

#include "Failure.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

[[noreturn]] void Fail()
{
    throw Failure(std::string("cannot start another process: ") + std::strerror(errno));
}

[[noreturn]] void BeChild(const std::function<void(int)>& iBody, int iReport)
{
    std::signal(SIGPIPE, SIG_DFL);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    iBody(iReport);
    std::fflush(nullptr);
    _exit(0);
}

std::string ReadAll(int iDescriptor)
{
    std::string text;
    char piece[4096];
    ssize_t size = 0;
    while ((size = read(iDescriptor, piece, sizeof piece)) > 0 || (size < 0 && errno == EINTR))
        if (size > 0)
            text.append(piece, static_cast<std::size_t>(size));
    return text;
}

int WaitFor(pid_t iChild)
{
    int status = 0;
    while (waitpid(iChild, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

ChildOutcome RunInChild(const std::function<void(int)>& iBody)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        Fail();
    const pid_t child = fork();
    if (child == 0)
        BeChild(iBody, ends[1]);
    close(ends[1]);
    std::string report = child < 0 ? "" : ReadAll(ends[0]);
    close(ends[0]);
    if (child < 0)
        Fail();
    return {std::move(report), WaitFor(child)};
}
