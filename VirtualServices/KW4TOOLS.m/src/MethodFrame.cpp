#include "MethodFrame.h"

#include "ZORString.h"

#include <ostream>

namespace
{

constexpr int kIndentOfLines = 3; // more than the scope's own

} // namespace

void MethodFrame::WriteLine(const char* iLabel, const char* iLink, std::string_view iValue)
{
    ZORString text;
    std::ostream& line = _Trace.GetLigne().GetStream();
    line << _Trace.Indent(text, _Trace.GetIndent() + kIndentOfLines);
    line << _Trace.GetMethod(text) << ' ' << iLabel << iLink << iValue << std::endl;
    _Trace.Out();
}
