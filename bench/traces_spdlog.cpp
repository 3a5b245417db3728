// A statement of spdlog that is off, and a line that it flushes to a file.
#include "traces_rows.h"

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

namespace
{

void Off(benchmark::State& ioState)
{
    spdlog::logger logger("bench");
    logger.set_level(spdlog::level::info);
    const int lines = 1;
    for (auto _ : ioState) {
        logger.debug("{} {}", lines, kFileName);
        benchmark::ClobberMemory();
    }
    Check(ioState, !logger.should_log(spdlog::level::debug));
}

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
    Row("off", "spdlog", Off);
    LineRow("spdlog", Line);
});

} // namespace
