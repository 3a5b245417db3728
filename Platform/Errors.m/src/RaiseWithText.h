#pragma once

#include "ZORError.h"

#include <memory>
#include <new>
#include <string>

// Raises an error of that class with that text; std::bad_alloc when there is no memory for it.
// REQUIRES: Throw of that class does not return.
template <class Error>
[[noreturn]] void RaiseWithText(const std::string& iText, const char* iFile, int iLine)
{
    std::unique_ptr<Error> error(new Error);
    if (!error)
        throw std::bad_alloc();
    error->SetText(ZORUnicodeString(iText));
    error.release()->Throw(iFile, iLine);
    throw std::bad_alloc(); // not reached
}
