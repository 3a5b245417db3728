#pragma once

#include "ZORDictionary.h"

class ZORMetaClass;

// Who makes the adapter that shows the interface on objects of the class, or null. The class itself
// comes before its ancestors and, for each, loaded code before dictionary files. The files are read
// when loaded code has no answer for the class itself; the library that a file names is loaded when
// its entry is the answer, and an error is raised when that cannot be done.
ZORCreator FindCreator(const ZORMetaClass* iClass, const ZORMetaClass* iInterface);
