// A trace point of the LTTng user-space tracer that is off.
#include "traces_rows.h"

#include <lttng/tracef.h>

namespace
{

const Rows kRows([] {
    OffRow("off", "LTTng", [](int& ioLines) { lttng_ust_tracef("%d", ++ioLines); });
});

} // namespace
