#pragma once

#include <string>

// The text of an error in the user's language: from the catalog of the error's class, the text (or
// the short text) of the tag that is the identifier in hexadecimal digits. `iBuiltIn` when there is
// none, or when anything goes wrong on the way: the error itself is what matters.
std::string ErrorText(const char* iClass, unsigned int iId, const char* iBuiltIn);
