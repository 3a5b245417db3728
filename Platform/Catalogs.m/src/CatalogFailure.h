#pragma once

#include <stdexcept>

// Why a message catalog cannot be read, in words for people. Inside the area only: an error of the
// framework, in the making of whose text catalogs are read, must not come out of that.
class CatalogFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
