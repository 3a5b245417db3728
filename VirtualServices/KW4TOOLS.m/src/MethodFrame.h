#pragma once

#include "GuardedBlock.h"
#include "ZORPSNTrace.h"
#include "ZORUnicodeString.h"

#include <string_view>

// The frame that every operation of the services runs in: a trace scope, a line for each input, a
// guarded block around the body, a line for each result. An operation reads as
//
//     MethodFrame frame("ZORDuxServices::GetSetting");
//     frame.Value("iVariableName", iVariableName);
//     return Guarded(ErrorReport::Long, [&] { … checks, body, result … });
//
// Nothing is written, nor converted, while the level is inactive; each line tests it anew.
class MethodFrame
{
public:
    // The level of every scope of the services.
    static constexpr int kLevel = 42;

    // `iMethod` is a literal.
    explicit MethodFrame(const char* iMethod) : _Trace(iMethod, kLevel, nullptr) {}

    // Writes the line "<label> = <value>".
    void Value(const char* iLabel, const ZORUnicodeString& iValue)
    {
        if (ZORPSNTrace::LevelIsActive(_Trace.GetLevel()))
            WriteLine(iLabel, " = ", iValue.ConvertToChar());
    }
    void Value(const char* iLabel, const char* iValue)
    {
        if (ZORPSNTrace::LevelIsActive(_Trace.GetLevel()))
            WriteLine(iLabel, " = ", iValue);
    }
    void Value(const char* iLabel, std::string_view iValue)
    {
        if (ZORPSNTrace::LevelIsActive(_Trace.GetLevel()))
            WriteLine(iLabel, " = ", iValue);
    }
    // Writes the line "<text>".
    void Note(const char* iText)
    {
        if (ZORPSNTrace::LevelIsActive(_Trace.GetLevel()))
            WriteLine(iText, "", "");
    }
    // Writes the line "<text><value>".
    void Note(const char* iText, std::string_view iValue)
    {
        if (ZORPSNTrace::LevelIsActive(_Trace.GetLevel()))
            WriteLine(iText, "", iValue);
    }

private:
    void WriteLine(const char* iLabel, const char* iLink, std::string_view iValue);

    ZORPSNTrace _Trace;
};
