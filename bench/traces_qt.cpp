// A statement of a Qt category that is off.
#include "traces_rows.h"

#include <QLoggingCategory>

namespace
{

const QLoggingCategory category("bench", QtWarningMsg);

const Rows kRows([] { OffRow("off", "Qt", [](int& ioLines) { qCDebug(category) << ++ioLines; }); });

} // namespace
