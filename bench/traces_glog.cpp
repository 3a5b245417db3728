// A statement of Google's log that is off.
#include "traces_rows.h"

#include <glog/logging.h>

namespace
{

const Rows kRows([] { OffRow("off", "glog", [](int& ioLines) { VLOG(42) << ++ioLines; }); });

} // namespace
