#pragma once

#include <string>
#include <sys/stat.h>

// Gives the new file `iTo` the owner, group, permissions, access list and other attributes of the
// open file `iFrom`, whose status is given. Owner and group follow where that is permitted; what
// cannot follow never widens the permissions of anybody. Raises an error that names the file
// `iFile` when a step fails for another reason.
void CopyFileAttributes(const std::string& iFile, int iFrom, const struct stat& iStatus, int iTo);
