#pragma once

// Marks what a shared library of the suite shows to others; everything else stays hidden.
#define ZOR_EXPORT __attribute__((visibility("default")))

// Keeps a member of an exported class inside its library.
#define ZOR_HIDDEN __attribute__((visibility("hidden")))
