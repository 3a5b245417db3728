#pragma once

#include "CatalogText.h"

#include <memory>
#include <string>

// The catalog in a file, or null when there is no such file. Raises a CatalogFailure that names the
// file when it cannot be read, is damaged, is larger than 16 MiB, or is no plain file (which is
// found out without waiting for it). A file that has not changed is not read twice.
std::shared_ptr<const CatalogText> ReadCatalog(const std::string& iPath);
