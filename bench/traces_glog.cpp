// A statement of Google's log that is off.
#include "traces_rows.h"

#include <glog/logging.h>

namespace
{

const Rows kRows([] {
    Row("off", "glog", [](benchmark::State& ioState) {
        int lines = 0;
        for (auto _ : ioState) {
            VLOG(42) << ++lines << kFileName;
            benchmark::ClobberMemory();
        }
        Check(ioState, lines == 0);
    });
});

} // namespace
