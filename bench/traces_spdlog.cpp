// A statement of spdlog that is off, and a line that it flushes to a file.
#include "traces_rows.h"

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

namespace
{

void Line(benchmark::State& ioState)
{
    const LineFile file;
    spdlog::logger logger("bench",
                          std::make_shared<spdlog::sinks::basic_file_sink_st>(file.Path()));
    logger.set_level(spdlog::level::debug);
    logger.flush_on(spdlog::level::debug);
    logger.set_pattern("   %v");
    for (auto _ : ioState)
        logger.debug("{} iFileName = {}", "ZORDuxServices::GetSetting", kFileName);
    Check(ioState, file.Holds(ioState.iterations(), kMethodLine));
}

const Rows kRows([] {
    OffRow("off", "spdlog", [logger = std::make_shared<spdlog::logger>("bench")](int& ioLines) {
        logger->debug("{}", ioLines);
    });
    LineRow("spdlog", Line);
});

} // namespace
