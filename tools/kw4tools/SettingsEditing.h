#pragma once

#include "Status.h"

#include <string>

// Has the user change a copy of the settings file in an editor, and saves it: when it is sound,
// and nobody else changed the file meanwhile. What is not saved stays in the copy. A Failure says
// why nothing was saved; errors of the settings files are told and go on.
Status EditSettings(const std::string& iFile);
