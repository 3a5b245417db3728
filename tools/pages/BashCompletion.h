#pragma once

#include "Command.h"

#include <iosfwd>

// Writes the completion of a program for bash.
void WriteBashCompletion(const Command& iRoot, std::ostream& ioStream);
