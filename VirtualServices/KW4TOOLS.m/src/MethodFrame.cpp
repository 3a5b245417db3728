#include "MethodFrame.h"

void MethodFrame::WriteLine(const char* iLabel, const char* iLink, std::string_view iValue)
{
    _Trace.WriteLine({iLabel, iLink, iValue});
}
