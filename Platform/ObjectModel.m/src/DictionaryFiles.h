#pragma once

// Reads the dictionary files and enters what they declare, once per process. Returns whether any
// entry came of it. Mistakes are told on standard error.
bool ReadDictionaryFiles();
