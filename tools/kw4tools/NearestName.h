#pragma once

#include <string>
#include <vector>

// The name that was meant by somebody who typed another: the first of those with the fewest letters
// left out, put in, changed or swapped with their neighbours, at most every third one; else the
// only one that begins with what was typed; else nothing.
std::string NearestName(const std::string& iTyped, const std::vector<std::string>& iNames);
