#pragma once

#include "CatalogText.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Finds texts of one catalog. Opens files as it comes to them, each once: what is found in one
// look-up agrees with what is found in the next.
class CatalogLookup
{
public:
    // Settles the paths by the environment as it is now; opens nothing.
    explicit CatalogLookup(std::string_view iCatalog);

    // The text of that key from the first file that has it; null when none has. It lives as long as
    // this object. Raises a CatalogFailure when a file on the way cannot be read.
    const std::string* Find(std::string_view iKey);

    // Whether there is any file of the catalog.
    bool Exists();

private:
    struct File {
        std::string path;
        bool read;
        std::shared_ptr<const CatalogText> text; // null when there is no such file
    };

    static const CatalogText* Read(File& ioFile);

    std::vector<File> _Files;
};
