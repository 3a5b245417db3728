#pragma once

#include "DictionaryText.h"
#include "ZORDictionary.h"

#include <atomic>
#include <string>

// An adapter that a dictionary file declares: its library is loaded when it is first asked for, and
// stays.
class DeclaredAdapter
{
public:
    DeclaredAdapter(std::string iFile, DictionaryEntry iEntry);

    // Who makes the adapter. Raises a ZORInternalError, with the loader's text, when the library
    // cannot be loaded or has no such function; the next call tries again.
    ZORCreator GetCreator();

private:
    std::string LibraryPath() const;
    ZORCreator Load() const;
    [[noreturn]] void Raise(const std::string& iWhat) const;

    const std::string _File;
    const DictionaryEntry _Entry;
    std::atomic<ZORCreator> _Creator{nullptr};
};
