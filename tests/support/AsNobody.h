#pragma once

#include "ChildProcess.h"

#include <cstdio>
#include <functional>
#include <grp.h>
#include <gtest/gtest.h>
#include <unistd.h>

constexpr uid_t kNobody = 65534;

// What a step does as a user without any rights of root's. True when the step says so; a failed
// test when this process cannot become that user.
inline bool AsNobody(const std::function<bool()>& iStep)
{
    const int status = InChild([&] {
        if (geteuid() == 0 &&
            (setgroups(0, nullptr) != 0 || setresgid(kNobody, kNobody, kNobody) != 0 ||
             setresuid(kNobody, kNobody, kNobody) != 0)) {
            std::perror("cannot become another user");
            return 98;
        }
        return iStep() ? 0 : 1;
    });
    EXPECT_NE(status, 98);
    return status == 0;
}
