#pragma once

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <functional>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

// A copy of the test's process that does one thing; killed at the end of the scope if it still
// runs.
class ChildProcess
{
public:
    // The child ends with the result of the function as its exit status, or 99 after an exception.
    explicit ChildProcess(const std::function<int()>& iDo) : _Pid(fork())
    {
        if (_Pid != 0)
            return;
        int status = 99;
        try {
            status = iDo();
        } catch (const std::exception& exception) {
            std::fprintf(stderr, "child %d: %s\n", getpid(), exception.what());
        }
        _exit(status);
    }
    ~ChildProcess()
    {
        if (_Pid > 0) {
            Send(SIGKILL);
            Wait();
        }
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t Pid() const { return _Pid; }
    void Send(int iSignal) const { kill(_Pid, iSignal); }

    // Waits for the end and returns the exit status, or minus the signal that ended the child.
    int Wait()
    {
        int status = 0;
        waitpid(_Pid, &status, 0);
        _Pid = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    pid_t _Pid;
};

// Does one thing in a child and returns its exit status.
inline int InChild(const std::function<int()>& iDo)
{
    return ChildProcess(iDo).Wait();
}
