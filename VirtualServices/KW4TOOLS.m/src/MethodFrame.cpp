#include "MethodFrame.h"

#include "ZORString.h"

#include <ostream>

namespace
{

constexpr int kIndentOfLines = 3; // more than the scope's own

} // namespace

void MethodFrame::WriteLine(const char* iLabel, const char* iLink, std::string_view iValue)
{
    ZORString indentation;
    ZORString method;
    _Trace.Indent(indentation, _Trace.GetIndent() + kIndentOfLines);
    _Trace.GetMethod(method);
    _Trace.GetLigne().GetStream() << indentation.ConvertToChar() << method.ConvertToChar() << ' '
                                  << iLabel << iLink << iValue << std::endl;
    _Trace.Out();
}
