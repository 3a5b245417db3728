#pragma once

#include <string>

// Whether the shared library defines the symbol for others, read from the file. True also when that
// cannot be told, because the file's list of sections was stripped; false for what is no library of
// this kind of machine.
bool ExportsSymbol(const std::string& iLibrary, const std::string& iSymbol);
