#pragma once

#include "SettingsChanges.h"
#include "SettingsText.h"

#include <string>

// The text of the file `iFile` with the changes made in it, and no other byte touched:
// - an attribute that has the strings already stays as it is; else its value alone is replaced, in
//   its own quoting style where that can carry the new text. A list that keeps its length has only
//   the items replaced that change;
// - a new attribute goes on a line of its own behind the last one, or above the first table and the
//   comment that belongs to it, with the line break of the line before;
// - a removed attribute takes its lines with it, and what comment stands behind it on them.
// Raises an error when a name that is to be written is a table in the file.
std::string EditSettings(const std::string& iFile, const SettingsText& iText,
                         const SettingsChanges& iChanges);
