#pragma once

// The TOML library, set up for text that nobody has vouched for. Include this instead of its own
// header: all sources must agree on the set-up.
//
// Its assertions are compiled out: some do not hold for damaged text, and what follows them deals
// with it. NDEBUG would turn them into promises to the compiler instead, so it is off in there.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(iCondition) static_cast<void>(0)
#define TOML_HEADER_ONLY 1
#define TOML_ENABLE_FORMATTERS 0
#define TOML_ENABLE_UNRELEASED_FEATURES 0
#include <toml++/toml.h>
#pragma pop_macro("NDEBUG")
