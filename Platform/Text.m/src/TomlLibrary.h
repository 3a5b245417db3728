#pragma once

// The TOML library as every area of the platform includes it: heavy, so in as few sources as
// possible, and there first of all headers.

// Its own assertions are compiled out: some of them do not hold for damaged text, and what follows
// them deals with it. NDEBUG would turn them into promises to the compiler instead.
#undef NDEBUG
#define TOML_ASSERT(iCondition) static_cast<void>(0)
#define TOML_HEADER_ONLY 1
#define TOML_ENABLE_FORMATTERS 0
#define TOML_ENABLE_UNRELEASED_FEATURES 0
#include <toml++/toml.h>
