// A statement of a Qt category that is off.
#include "traces_rows.h"

#include <QLoggingCategory>

namespace
{

const Rows kRows([] {
    Row("off", "Qt", [](benchmark::State& ioState) {
        const QLoggingCategory category("bench", QtWarningMsg);
        int lines = 0;
        for (auto _ : ioState) {
            qCDebug(category) << ++lines << kFileName;
            benchmark::ClobberMemory();
        }
        Check(ioState, lines == 0);
    });
});

} // namespace
