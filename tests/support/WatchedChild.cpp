#include "WatchedChild.h"

#include "CapturedOutput.h"
#include "NeedsTracing.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#ifndef __x86_64__
#error "the watching of system calls knows the registers of x86-64 only"
#endif

namespace
{

// System calls that do not exist tell the tracer where a stretch begins and ends.
constexpr long kBegin = 1'000'001;
constexpr long kEnd = 1'000'002;

constexpr struct {
    long number;
    const char* name;
} kFileCalls[] = {
    {SYS_access, "access"},
    {SYS_chmod, "chmod"},
    {SYS_close, "close"},
    {SYS_faccessat, "faccessat"},
    {SYS_faccessat2, "faccessat2"},
    {SYS_fchmod, "fchmod"},
    {SYS_fchmodat, "fchmodat"},
    {SYS_fchown, "fchown"},
    {SYS_fchownat, "fchownat"},
    {SYS_fcntl, "fcntl"},
    {SYS_fdatasync, "fdatasync"},
    {SYS_fgetxattr, "fgetxattr"},
    {SYS_flistxattr, "flistxattr"},
    {SYS_flock, "flock"},
    {SYS_fremovexattr, "fremovexattr"},
    {SYS_fsetxattr, "fsetxattr"},
    {SYS_fstat, "fstat"},
    {SYS_fsync, "fsync"},
    {SYS_ftruncate, "ftruncate"},
    {SYS_getdents64, "getdents64"},
    {SYS_link, "link"},
    {SYS_linkat, "linkat"},
    {SYS_lseek, "lseek"},
    {SYS_lstat, "lstat"},
    {SYS_mkdir, "mkdir"},
    {SYS_mkdirat, "mkdirat"},
    {SYS_newfstatat, "newfstatat"},
    {SYS_open, "open"},
    {SYS_openat, "openat"},
    {SYS_pread64, "pread64"},
    {SYS_pwrite64, "pwrite64"},
    {SYS_read, "read"},
    {SYS_readlink, "readlink"},
    {SYS_readlinkat, "readlinkat"},
    {SYS_readv, "readv"},
    {SYS_rename, "rename"},
    {SYS_renameat, "renameat"},
    {SYS_renameat2, "renameat2"},
    {SYS_stat, "stat"},
    {SYS_statx, "statx"},
    {SYS_unlink, "unlink"},
    {SYS_unlinkat, "unlinkat"},
    {SYS_write, "write"},
    {SYS_writev, "writev"},
};

bool IsFileCall(long iCall)
{
    return std::any_of(std::begin(kFileCalls), std::end(kFileCalls),
                       [&](const auto& each) { return each.number == iCall; });
}

std::string NameOf(long iCall)
{
    for (const auto& each : kFileCalls)
        if (each.number == iCall)
            return each.name;
    return "system call " + std::to_string(iCall);
}

bool Writes(long iCall)
{
    return iCall == SYS_write || iCall == SYS_pwrite64;
}

bool Reads(long iCall)
{
    return iCall == SYS_read || iCall == SYS_pread64;
}

bool Counts(Interference::Kind iKind, long iCall)
{
    switch (iKind) {
    case Interference::Tear:
        return Writes(iCall);
    case Interference::Shorten:
        return Writes(iCall) || Reads(iCall);
    case Interference::Fail:
        return IsFileCall(iCall);
    default:
        return true;
    }
}

// A register of a stopped process.
unsigned long long Peek(pid_t iProcess, std::size_t iRegister)
{
    return static_cast<unsigned long long>(ptrace(PTRACE_PEEKUSER, iProcess, iRegister, nullptr));
}

void Poke(pid_t iProcess, std::size_t iRegister, long iValue)
{
    ptrace(PTRACE_POKEUSER, iProcess, iRegister, iValue);
}

constexpr std::size_t kNumber = offsetof(user_regs_struct, orig_rax);
constexpr std::size_t kResult = offsetof(user_regs_struct, rax);
constexpr std::size_t kSize = offsetof(user_regs_struct, rdx); // of reads and writes

// Lets the child run from stop to stop and interferes.
class Tracer
{
public:
    Tracer(pid_t iChild, const Interference& iInterference)
        : _Child(iChild), _Interference(iInterference)
    {
    }

    // Until the child's end, which is told as waitpid tells it.
    int Follow()
    {
        int status = Wait();
        if (!WIFSTOPPED(status))
            return status;
        ptrace(PTRACE_SETOPTIONS, _Child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        long signal = 0;
        while (true) {
            ptrace(PTRACE_SYSCALL, _Child, nullptr, signal);
            signal = 0;
            status = Wait();
            if (!WIFSTOPPED(status))
                return status;
            if (WSTOPSIG(status) != (SIGTRAP | 0x80))
                signal = WSTOPSIG(status);
            else if ((_Inside = !_Inside))
                Enter(static_cast<long>(Peek(_Child, kNumber)));
            else
                Leave();
        }
    }

    std::string met;
    std::vector<std::string> calls;

private:
    int Wait() const
    {
        int status = 0;
        waitpid(_Child, &status, 0);
        return status;
    }

    void Enter(long iCall)
    {
        _Meets = false;
        _Call = iCall;
        if (iCall == kBegin || iCall == kEnd) {
            _Watching = iCall == kBegin;
            _Count = 0;
            _MetCall = -1;
            return;
        }
        if (!_Watching)
            return;
        calls.push_back(NameOf(iCall));
        if (!Counts(_Interference.kind, iCall))
            return;
        _Meets = ++_Count == _Interference.call || (_Interference.forGood && iCall == _MetCall);
        if (_Meets)
            Interfere();
    }

    void Interfere()
    {
        _MetCall = _Call;
        met = NameOf(_Call);
        switch (_Interference.kind) {
        case Interference::Kill:
            kill(_Child, SIGKILL);
            break;
        case Interference::Tear:
        case Interference::Shorten:
            Poke(_Child, kSize, static_cast<long>((Peek(_Child, kSize) + 1) / 2));
            break;
        case Interference::Fail:
            if (_Call != SYS_close)
                Poke(_Child, kNumber, -1);
            break;
        case Interference::None:
            break;
        }
    }

    void Leave() const
    {
        if (_Meets && _Interference.kind == Interference::Fail)
            Poke(_Child, kResult, -_Interference.error);
        if (_Meets && _Interference.kind == Interference::Tear)
            kill(_Child, SIGKILL);
    }

    const pid_t _Child;
    const Interference _Interference;
    bool _Inside = false; // a system call
    bool _Watching = false;
    bool _Meets = false; // the call that the child is in
    long _Call = -1;     // that call
    long _MetCall = -1;
    int _Count = 0;
};

[[noreturn]] void BeChild(int iReports, const std::function<std::string()>& iBody)
{
    int status = 99;
    try {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            throw std::system_error(errno, std::generic_category(), "cannot be traced");
        raise(SIGSTOP);
        const std::string report = iBody();
        status =
            write(iReports, report.data(), report.size()) == static_cast<ssize_t>(report.size())
                ? 0
                : 98;
    } catch (const std::exception& raised) {
        std::fprintf(stderr, "watched child: %s\n", raised.what());
    }
    _exit(status);
}

std::string ReadAll(int iFile)
{
    std::string text;
    char piece[4096];
    for (ssize_t got; (got = read(iFile, piece, sizeof piece)) > 0;)
        text.append(piece, static_cast<std::size_t>(got));
    return text;
}

} // namespace

WatchedEnd InWatchedChild(const Interference& iInterference,
                          const std::function<std::string()>& iBody)
{
    const CapturedOutput error(STDERR_FILENO);
    int reports[2];
    if (pipe(reports) != 0)
        throw std::runtime_error("no pipe for a child");
    const pid_t child = fork();
    if (child == 0)
        BeChild(reports[1], iBody);
    close(reports[1]);
    Tracer tracer(child, iInterference);
    const int status = tracer.Follow();
    const std::string report = ReadAll(reports[0]);
    close(reports[0]);
    return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), report, error.Text(),
            tracer.met, tracer.calls};
}

void Watched(const std::function<void()>& iStretch)
{
    syscall(kBegin);
    try {
        iStretch();
    } catch (...) {
        syscall(kEnd);
        throw;
    }
    syscall(kEnd);
}
