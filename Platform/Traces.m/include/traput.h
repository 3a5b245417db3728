#pragma once

#include "ZORExport.h"

// Puts to trace channels: a text goes to the end of the line that the channel is making, and every
// line that it finishes is written (see ZORTrace.h). A put to a channel that is switched off, to a
// number that is no channel's, or without a text does nothing. Puts never fail and never raise.
//
//     traput(trace.GetHandle(), 2, "directories: ");
//     _traputl(trace.GetHandle(), 2, "", &count, 0);
//     traput(trace.GetHandle(), 2, "\n");
//
// Thread rule: one thread.

// `iLevel` is the level the text is put at; texts of every level are written.
ZOR_EXPORT void traput(int iTrace, int iLevel, const char* iText);

// Puts the number at `iValue`. An empty (or null) format writes it in decimal. Any other is the
// middle of a printf conversion, flags, width, precision and one of d, i, o, u, x, X, as in "08x";
// a format of another form counts as empty. `iNone` is 0.
ZOR_EXPORT void _traputl(int iTrace, int iLevel, const char* iFormat, const long* iValue,
                         int iNone);
