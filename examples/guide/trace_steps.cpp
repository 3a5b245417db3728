// Traces the blocks it goes through on the channel "DuxSearch".

#include "ZORDuxTrace.h"
#include "ZORDuxTraceStep.h"

namespace
{

void Look(ZORDuxTrace& ioTrace, const char* iDirectory)
{
    const ZORDuxTraceStep step(&ioTrace, "Look");
    ioTrace << "in " << iDirectory << '\n';
}

} // namespace

int main()
{
    char name[] = "DuxSearch";
    ZORDuxTrace trace(name, nullptr, nullptr, 2);
    const ZORDuxTraceStep step(&trace, "main");
    trace << "directories: " << 2 << '\n';
    Look(trace, "models");
    Look(trace, "archive");
}
