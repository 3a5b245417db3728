#include "RunProgram.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

// A file without a name: no pipe that fills up, whatever the program writes.
File Nameless()
{
    File file(std::tmpfile(), std::fclose);
    if (!file)
        throw std::runtime_error("cannot make a temporary file");
    return file;
}

std::string Contents(std::FILE* iFile)
{
    const int descriptor = fileno(iFile);
    std::string text(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    if (pread(descriptor, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("cannot read what the program wrote");
    return text;
}

int BrokenPipe()
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("cannot make a pipe");
    close(ends[0]);
    return ends[1];
}

int Status(pid_t iProcess)
{
    constexpr int kSignalled = 128;
    int status = 0;
    if (waitpid(iProcess, &status, 0) != iProcess)
        throw std::runtime_error("the program is gone");
    return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
}

} // namespace

RunProgram& RunProgram::Environment(const std::string& iName,
                                    const std::optional<std::string>& iValue)
{
    _Environment[iName] = iValue;
    return *this;
}

RunProgram& RunProgram::Input(std::string iBytes)
{
    _Input = std::move(iBytes);
    return *this;
}

RunProgram& RunProgram::In(std::string iDirectory)
{
    _Directory = std::move(iDirectory);
    return *this;
}

RunProgram& RunProgram::OutputTo(std::string iPath)
{
    _OutputPath = std::move(iPath);
    return *this;
}

RunProgram& RunProgram::OutputToBrokenPipe()
{
    _BrokenPipe = true;
    return *this;
}

RunProgram& RunProgram::OnTerminal()
{
    _Terminal = true;
    return *this;
}

RunProgram& RunProgram::Closed(int iDescriptor)
{
    _Closed.push_back(iDescriptor);
    return *this;
}

RunProgram::Outcome RunProgram::operator()(const std::vector<std::string>& iArguments) const
{
    if (_Terminal)
        return RunOnTerminal(iArguments);
    const File in = Nameless();
    const File out = Nameless();
    const File err = Nameless();
    std::fwrite(_Input.data(), 1, _Input.size(), in.get());
    std::rewind(in.get());
    std::fflush(nullptr);
    const pid_t process = fork();
    if (process < 0)
        throw std::runtime_error("cannot fork");
    if (process == 0)
        Become(iArguments, fileno(in.get()), fileno(out.get()), fileno(err.get()));
    const int status = Status(process);
    return {status, Contents(out.get()), Contents(err.get())};
}

RunProgram::Outcome RunProgram::RunOnTerminal(const std::vector<std::string>& iArguments) const
{
    int keyboard = -1;
    int terminal = -1;
    termios plain{}; // neither echoes nor changes what passes
    plain.c_lflag = ICANON;
    plain.c_cc[VEOF] = 4;
    if (openpty(&keyboard, &terminal, nullptr, &plain, nullptr) != 0)
        throw std::runtime_error("cannot make a terminal");
    std::fflush(nullptr);
    const pid_t process = fork();
    if (process < 0)
        throw std::runtime_error("cannot fork");
    if (process == 0)
        Become(iArguments, terminal, terminal, terminal);
    close(terminal);
    const std::string typed = _Input + static_cast<char>(plain.c_cc[VEOF]);
    if (write(keyboard, typed.data(), typed.size()) != static_cast<ssize_t>(typed.size()))
        throw std::runtime_error("cannot type on the terminal");
    // Nothing more can be read when nobody has the terminal any longer.
    std::string shown;
    char piece[4096];
    for (ssize_t got = 0; (got = read(keyboard, piece, sizeof piece)) > 0;)
        shown.append(piece, static_cast<std::size_t>(got));
    const int status = Status(process);
    close(keyboard);
    return {status, shown, ""};
}

void RunProgram::Become(const std::vector<std::string>& iArguments, int iIn, int iOut,
                        int iErr) const
{
    constexpr int kCannotRun = 127;
    std::signal(SIGPIPE, SIG_DFL);
    dup2(iIn, STDIN_FILENO);
    dup2(_BrokenPipe           ? BrokenPipe()
         : _OutputPath.empty() ? iOut
                               : open(_OutputPath.c_str(), O_WRONLY),
         STDOUT_FILENO);
    dup2(iErr, STDERR_FILENO);
    for (const int descriptor : _Closed)
        close(descriptor);
    for (const auto& [name, value] : _Environment)
        value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    if (!_Directory.empty() && chdir(_Directory.c_str()) != 0)
        _exit(kCannotRun);
    std::vector<char*> arguments = {const_cast<char*>(_Path.c_str())};
    for (const std::string& argument : iArguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    execv(_Path.c_str(), arguments.data());
    std::perror(_Path.c_str());
    _exit(kCannotRun);
}
