#pragma once

class ZORLineFile;

// Opens the file that the environment variable names, if it names one. One that cannot be opened is
// told on standard error, where lines then go. errno is left as it was.
void OpenTraceFile(ZORLineFile& ioFile, const char* iVariable);
