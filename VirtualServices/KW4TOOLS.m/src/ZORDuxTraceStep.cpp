#include "ZORDuxTraceStep.h"

#include "ZORDuxTrace.h"

ZORDuxTraceStep::ZORDuxTraceStep(ZORDuxTrace* iTrace, const char* iFunction) : _Trace(iTrace)
{
    if (_Trace)
        _Trace->FunctionBegin(iFunction);
}

ZORDuxTraceStep::~ZORDuxTraceStep()
{
    if (_Trace)
        _Trace->FunctionEnd();
}
