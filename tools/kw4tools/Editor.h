#pragma once

#include <string>

// Opens the file in the editor of the user (VISUAL, else EDITOR, else vi) and waits for its end. A
// Failure when it cannot be run or does not end well.
void OpenInEditor(const std::string& iFile);
