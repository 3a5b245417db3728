#include "ZORDictionary.h"

#include "DictionaryFiles.h"
#include "Registry.h"

void AddDictionary(const GUID& iClassId, const GUID* iKind, const char* iClassName,
                   const char* iEntryName, ZORCreator iCreator, void* iObject,
                   const char* /*iLibrary*/, int /*iFlags*/)
{
    if (iKind && *iKind == CLSID_ZORMetaClass && iObject)
        Registry::Instance().Identify(iClassId, static_cast<ZORMetaClass*>(iObject));
    if (iCreator && iClassName && iEntryName)
        Registry::Instance().AddAdapter(iClassName, iEntryName, iCreator);
}

int RemoveDictionary(const char* iClassName, const char* iInterfaceName)
{
    if (!iClassName || !iInterfaceName)
        return 0;
    ReadDictionaryFiles();
    return Registry::Instance().RemoveAll(iClassName, iInterfaceName);
}

ZORFillDictionary::ZORFillDictionary(const char* iClassName, const char* iInterfaceName,
                                     ZORCreator iCreator)
    : _ClassName(iClassName), _InterfaceName(iInterfaceName), _Creator(iCreator)
{
    Registry::Instance().AddAdapter(_ClassName, _InterfaceName, _Creator);
}

ZORFillDictionary::~ZORFillDictionary()
{
    Registry::Instance().RemoveAdapter(_ClassName, _InterfaceName, _Creator);
}
