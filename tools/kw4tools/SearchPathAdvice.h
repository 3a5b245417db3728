#pragma once

#include "ZORError.h"

#include <string>

// What to do about an error that keeps the search path of the site from being read.
std::string SearchPathAdvice(ZORError& iError);
