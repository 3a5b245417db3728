#define TOML_IMPLEMENTATION // what the others only see declared

#include "TomlLibrary.h"
