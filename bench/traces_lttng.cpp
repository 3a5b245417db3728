// A trace point of the LTTng user-space tracer that is off.
#include "traces_rows.h"

#include <lttng/tracef.h>

namespace
{

const Rows kRows([] {
    Row("off", "LTTng", [](benchmark::State& ioState) {
        int lines = 0;
        for (auto _ : ioState) {
            lttng_ust_tracef("%d %s", ++lines, kFileName);
            benchmark::ClobberMemory();
        }
        Check(ioState, lines == 0);
    });
});

} // namespace
