#pragma once

#include "Command.h"

#include <iosfwd>

// Writes the completion of a program for zsh.
void WriteZshCompletion(const Command& iRoot, std::ostream& ioStream);
