#pragma once

#include "SettingsText.h"

#include <memory>
#include <string>
#include <sys/stat.h>

// The settings files this process has read, so that one that did not change is not read twice.
//
// A file is the same when device, inode, size and both times are. That cannot tell a change made in
// the same tick of the clock as the last one, so a file is taken for unchanged only when the clock
// had moved on from its times before it was read; a younger one is read again, and understood again
// if its bytes differ.
//
// Thread rule: any thread; and a process may fork at any time.

// The text of the file at that path; `iStatus` is its status now. Raises an error when it cannot be
// read or is damaged.
std::shared_ptr<const SettingsText> CachedSettings(const std::string& iPath,
                                                   const struct stat& iStatus);

// Notes what was saved at that path.
void CacheSavedSettings(const std::string& iPath, std::shared_ptr<const SettingsText> iText);
