#pragma once

#include "ZORExport.h"

class ZORDuxTrace;

// A function block of a trace, open from here to the end of the scope.
//
//     void Search(ZORDuxTrace* iTrace)
//     {
//         const ZORDuxTraceStep step(iTrace, "Search");
//         …
//     }
//
// Thread rule: one thread.
class ZOR_EXPORT ZORDuxTraceStep
{
public:
    // Calls the trace's FunctionBegin. The trace, which must outlive this object, may be null: then
    // nothing happens, now and at the end.
    ZORDuxTraceStep(ZORDuxTrace* iTrace, const char* iFunction);
    // Calls its FunctionEnd.
    ~ZORDuxTraceStep();
    ZORDuxTraceStep(const ZORDuxTraceStep&) = delete;
    ZORDuxTraceStep& operator=(const ZORDuxTraceStep&) = delete;

private:
    ZORDuxTrace* _Trace;
};
