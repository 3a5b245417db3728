#pragma once

#include <string>
#include <vector>

// The plain files of a directory whose names end in ".toml", without that ending, sorted by their
// bytes. A directory that cannot be read has none.
std::vector<std::string> TomlFilesIn(const std::string& iDirectory);
