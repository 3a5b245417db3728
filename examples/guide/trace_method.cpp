// A method that traces its argument and its result the way the services do.

#include "ZORPSNTrace.h"
#include "ZORString.h"

#include <ostream>

namespace
{

void Line(ZORPSNTrace& ioTrace, const char* iLabel, int iValue)
{
    if (!ZORPSNTrace::LevelIsActive(ioTrace.GetLevel()))
        return; // nothing is put together for a trace that is off
    ZORString text;
    std::ostream& line = ioTrace.GetLigne().GetStream();
    line << ioTrace.Indent(text, ioTrace.GetIndent() + 3);
    line << ioTrace.GetMethod(text) << ' ' << iLabel << " = " << iValue << std::endl;
    ioTrace.Out();
}

int Double(int iNumber)
{
    ZORPSNTrace trace("Sums::Double", 42, nullptr);
    Line(trace, "iNumber", iNumber);
    const int result = 2 * iNumber;
    Line(trace, "result", result);
    return result;
}

int Quadruple(int iNumber)
{
    ZORPSNTrace trace("Sums::Quadruple", 42, nullptr);
    Line(trace, "iNumber", iNumber);
    return Double(Double(iNumber));
}

} // namespace

int main()
{
    return Quadruple(3) == 12 ? 0 : 1;
}
