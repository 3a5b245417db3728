#include "ZORDuxTraceStep.h"

#include "InChild.h"
#include "ScopedEnvironment.h"
#include "ZORDuxTrace.h"

#include <gtest/gtest.h>

TEST(ZORDuxTraceStep, KeepsABlockOpenForItsScope)
{
    const ScopedEnvironment all("ZOR_TRACE", "all");
    const ScopedEnvironment level("DUX_TRACE_LEVEL", std::nullopt);
    const ScopedEnvironment terminal("TERM", std::nullopt);
    const ChildEnd end = InChild([] {
        char name[] = "Channel";
        ZORDuxTrace trace(name, nullptr, nullptr, 2);
        {
            const ZORDuxTraceStep outer(&trace, "Outer");
            const ZORDuxTraceStep inner(&trace, "Inner");
            trace << "text\n";
        }
        trace << "after\n";
    });
    EXPECT_EQ(end.error, "Channel          Outer() {\n"
                         "Channel          : Inner() {\n"
                         "Channel          : : text\n"
                         "Channel          : }\n"
                         "Channel          }\n"
                         "Channel          after\n");
}

TEST(ZORDuxTraceStep, DoesNothingWithoutATrace)
{
    const ChildEnd end = InChild([] {
        const ZORDuxTraceStep step(nullptr, "Block");
        _exit(TraceStackHead);
    });
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.error, "");
}
