#pragma once

#include "ZORExport.h"
#include "ZORGuid.h"

class ZORBaseUnknown;

// The dictionary: which class offers which interface, and who makes the adapter.
//
//     static const ZORFillDictionary entry("SomeClass", "SomeInterface",
//                                          CreateTIESomeInterfaceSomeClass);
//
// A query looks the pair (class of the object, interface) up, then (parent class, interface) and so
// on. Of several entries for one pair the oldest answers; an entry of loaded code goes before one
// of a dictionary file (see ZORDictionaryDirectories.h). Thread rule: any thread.

// Makes a new adapter bound to the object and returns it with the reference that SetImpl added;
// null when there is no memory, or none is made for this object.
using ZORCreator = ZORBaseUnknown* (*)(ZORBaseUnknown* iObject);

// Enters `iEntryName` for the class `iClassName`:
// - with the kind CLSID_ZORMetaClass, `iObject` is the class's ZORMetaClass and `iClassId` the
//   identifier under which the query for metaobjects finds it from now on;
// - with a creator, `iEntryName` is an interface and `iCreator` makes its adapters; the other
//   arguments do not matter.
// Names are copied. A null `iKind`, `iCreator` or `iObject` gives no entry of its sort, nor does a
// null name one with a creator. `iLibrary` and `iFlags` are 0 for entries made by loaded code.
ZOR_EXPORT void AddDictionary(const GUID& iClassId, const GUID* iKind, const char* iClassName,
                              const char* iEntryName, ZORCreator iCreator, void* iObject,
                              const char* iLibrary, int iFlags);

// Withdraws the adapter entries of the pair, that of a dictionary file included, and returns how
// many there were; 0 for a null name. Adapters that exist already go on working.
ZOR_EXPORT int RemoveDictionary(const char* iClassName, const char* iInterfaceName);

// A dictionary entry that lives as long as this object: made when a library is loaded, withdrawn
// when it is unloaded.
class ZOR_EXPORT ZORFillDictionary
{
public:
    // Enters the creator of the interface's adapters for the class. The names are kept as pointers
    // and must outlive this object. REQUIRES: no argument is null.
    ZORFillDictionary(const char* iClassName, const char* iInterfaceName, ZORCreator iCreator);
    // Withdraws that one entry. Adapters that exist already go on working.
    ~ZORFillDictionary();
    ZORFillDictionary(const ZORFillDictionary&) = delete;
    ZORFillDictionary& operator=(const ZORFillDictionary&) = delete;

private:
    const char* _ClassName;
    const char* _InterfaceName;
    ZORCreator _Creator;
};
