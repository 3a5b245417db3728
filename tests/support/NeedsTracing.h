#pragma once

#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

// To be included where a child is traced: where no process may do that, all tests of the program
// are skipped and say so.
class NeedsTracing : public testing::Environment
{
public:
    void SetUp() override
    {
        if (!IsAllowed()) // in the words that ctest knows, as no test gets to say them
            GTEST_SKIP() << "[  SKIPPED ] no process may trace its children here";
    }

private:
    static bool IsAllowed()
    {
        const pid_t child = fork();
        if (child == 0)
            _exit(ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 ? 0 : 1);
        int status = -1;
        waitpid(child, &status, 0);
        return status == 0;
    }
};

inline const testing::Environment* const kNeedsTracing =
    testing::AddGlobalTestEnvironment(new NeedsTracing);
