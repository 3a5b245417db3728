// What a process does to files before it asks for any.

#include "NeedsTracing.h"
#include "ScopedDirectory.h"
#include "ScopedEnvironment.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#ifndef __x86_64__
#error "the watching of system calls knows the registers of x86-64 only"
#endif

namespace
{

// The register that holds the path of such a system call; 0 when it has none.
std::size_t PathRegister(unsigned long long iCall)
{
    switch (iCall) {
    case SYS_open:
    case SYS_stat:
    case SYS_lstat:
    case SYS_access:
    case SYS_readlink:
    case SYS_chdir:
    case SYS_statfs:
        return offsetof(user_regs_struct, rdi);
    case SYS_openat:
    case SYS_newfstatat:
    case SYS_statx:
    case SYS_faccessat:
    case SYS_faccessat2:
    case SYS_readlinkat:
        return offsetof(user_regs_struct, rsi);
    default:
        return 0;
    }
}

std::string TextAt(pid_t iProcess, unsigned long long iAddress)
{
    std::string text(PATH_MAX, '\0');
    iovec here{text.data(), text.size()};
    iovec there{reinterpret_cast<void*>(iAddress), text.size()};
    process_vm_readv(iProcess, &here, 1, &there, 1, 0); // less of it at the end of a page
    return text.c_str();
}

unsigned long long Peek(pid_t iProcess, std::size_t iRegister)
{
    return static_cast<unsigned long long>(ptrace(PTRACE_PEEKUSER, iProcess, iRegister, nullptr));
}

// The paths that a program names to the kernel from its first instruction to its end.
std::vector<std::string> PathsTouchedBy(const char* iProgram)
{
    const pid_t child = fork();
    if (child == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        execl(iProgram, iProgram, nullptr);
        _exit(99);
    }
    std::vector<std::string> paths;
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    for (bool inside = false; WIFSTOPPED(status);) {
        if (WSTOPSIG(status) == (SIGTRAP | 0x80) && (inside = !inside)) {
            const auto call = Peek(child, offsetof(user_regs_struct, orig_rax));
            const std::size_t place = PathRegister(call);
            std::string path = place ? TextAt(child, Peek(child, place)) : "";
            if (!path.empty()) // the file of a descriptor has none
                paths.push_back(std::move(path));
        }
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    EXPECT_EQ(status, 0) << iProgram;
    return paths;
}

TEST(Startup, LoadsTheLibrariesAndMakesServicesWithoutTouchingAFile)
{
    const ScopedDirectory site;
    site.Write("site.toml", "DUX_PATH = \"/usr/share/dux\"\n");
    const ScopedEnvironment settings("ZOR_SETTINGS_PATH", site.Path().string());
    const ScopedEnvironment dictionary("ZOR_DICTIONARY_PATH", site.Path().string());
    const ScopedEnvironment catalogs("ZOR_CATALOG_PATH", site.Path().string());
    const std::vector<std::string> paths = PathsTouchedBy(KW_FIRST_SERVICES_OBJECT);
    // The loader looks for all libraries before any code of theirs runs.
    const auto isLibrary = [](const std::string& path) {
        return path.find(".so") != std::string::npos;
    };
    const auto loaded = std::find_if(paths.rbegin(), paths.rend(), isLibrary).base();
    ASSERT_NE(loaded, paths.begin()) << "nothing was watched";
    EXPECT_EQ(std::vector<std::string>(loaded, paths.end()), std::vector<std::string>());
}

} // namespace
