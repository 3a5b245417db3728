#include "Editor.h"

#include "Failure.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int kCannotRun = 127; // what the shell says

std::string EditorCommand()
{
    for (const char* const variable : {"VISUAL", "EDITOR"})
        if (const char* const command = std::getenv(variable); command && *command)
            return command;
    return "vi";
}

// The keys that interrupt are the editor's as long as it runs.
class InterruptsIgnored
{
public:
    InterruptsIgnored()
        : _Interrupt(std::signal(SIGINT, SIG_IGN)), _Quit(std::signal(SIGQUIT, SIG_IGN))
    {
    }
    ~InterruptsIgnored() { Restore(); }
    InterruptsIgnored(const InterruptsIgnored&) = delete;
    InterruptsIgnored& operator=(const InterruptsIgnored&) = delete;

    void Restore() const
    {
        std::signal(SIGINT, _Interrupt);
        std::signal(SIGQUIT, _Quit);
    }

private:
    using Handler = void (*)(int);
    const Handler _Interrupt;
    const Handler _Quit;
};

// The command may have arguments of its own, as in "gvim -f": the shell takes it apart, and makes
// way, so that signals and the exit status are the editor's.
[[noreturn]] void BecomeEditor(const std::string& iCommand, const std::string& iFile)
{
    const std::string line = "exec " + iCommand + " \"$@\"";
    std::signal(SIGPIPE, SIG_DFL);
    execl("/bin/sh", "sh", "-c", line.c_str(), iCommand.c_str(), iFile.c_str(), nullptr);
    _exit(kCannotRun);
}

int RunEditor(const std::string& iCommand, const std::string& iFile)
{
    const InterruptsIgnored ignored;
    const pid_t child = fork();
    if (child < 0)
        throw Failure(std::string("cannot start another process: ") + std::strerror(errno));
    if (child == 0) {
        ignored.Restore();
        BecomeEditor(iCommand, iFile);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

} // namespace

void OpenInEditor(const std::string& iFile)
{
    const std::string command = EditorCommand();
    const int status = RunEditor(command, iFile);
    const std::string editor = "the editor '" + command + "' ";
    if (WIFSIGNALED(status))
        throw Failure(editor + "was ended by a signal: " + strsignal(WTERMSIG(status)));
    if (WEXITSTATUS(status) == kCannotRun)
        throw Failure(editor + "cannot be run; set VISUAL or EDITOR to one that is there");
    if (WEXITSTATUS(status) != 0)
        throw Failure(editor + "ended with exit status " + std::to_string(WEXITSTATUS(status)));
}
