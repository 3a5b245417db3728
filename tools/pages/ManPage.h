#pragma once

#include "Command.h"

#include <iosfwd>
#include <string>

// Writes the man page of a program, in the man macros of roff, from what its commands say of
// themselves in their help.
void WriteManPage(const Command& iRoot, const std::string& iVersion, std::ostream& ioStream);
