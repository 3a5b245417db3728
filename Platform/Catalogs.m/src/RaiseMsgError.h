#pragma once

#include <string>

// Raises a ZORMsgError with that text.
[[noreturn]] void RaiseMsgError(const std::string& iText, const char* iFile, int iLine);
