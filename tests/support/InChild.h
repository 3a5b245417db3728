#pragma once

#include "CapturedOutput.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

// How a child process ended and what it wrote.
struct ChildEnd {
    int status; // of exit; minus the signal that killed it
    std::string output;
    std::string error;
};

// Runs `iBody` in a child of this process, with process-wide state as it is here by now. The child
// exits when the body returns (its static objects are destroyed), unless that ends it some other
// way; what the body raises makes it exit with 99. Checks are for the parent: the child's do not
// count.
template <class Body>
ChildEnd InChild(Body iBody)
{
    const CapturedOutput output(STDOUT_FILENO);
    const CapturedOutput error(STDERR_FILENO);
    const pid_t child = fork();
    if (child == 0) {
        try {
            iBody();
        } catch (const std::exception& raised) {
            std::fprintf(stderr, "raised: %s\n", raised.what());
            std::_Exit(99);
        }
        std::exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), output.Text(),
            error.Text()};
}
