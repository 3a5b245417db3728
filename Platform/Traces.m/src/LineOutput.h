#pragma once

#include <string_view>

// Writes the whole text to a descriptor, in one call unless the kernel takes less. What cannot be
// written is dropped. errno is left as it was. Writing to a pipe without a reader raises SIGPIPE,
// as everywhere.
void WriteWhole(int iDescriptor, std::string_view iText);

// Opens a file for whole lines at its end: made when missing, closed on exec. -1 and errno on
// failure.
int OpenForLines(const char* iPath);
