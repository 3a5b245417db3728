#include "ZORMsgCatalog.h"

#include "CatalogFailure.h"
#include "CatalogLookup.h"
#include "RaiseWithText.h"
#include "ZORMsg.h"
#include "ZORMsgError.h"

#include <new>

ZOR_IMPLEMENT_CLASS(ZORMsgCatalog, ZORKindImplementation, ZORBaseUnknown)

namespace
{

constexpr char kFile[] = "Platform/Catalogs.m/src/ZORMsgCatalog";

std::string Text(const ZORUnicodeString& iText)
{
    return iText.ConvertToChar();
}

} // namespace

ZORMsgCatalog::ZORMsgCatalog(const char* iName)
    : _Name(iName), _Lookup(std::make_unique<CatalogLookup>(_Name.ConvertToChar()))
{
}

ZORMsgCatalog::~ZORMsgCatalog() = default;

ZORMsg* ZORMsgCatalog::GetMsg(const ZORUnicodeString& iKey)
{
    const std::string* text = nullptr;
    bool exists = true;
    try {
        text = _Lookup->Find({iKey.ConvertToChar(), iKey.GetLengthInBytes()});
        exists = text || _Lookup->Exists();
    } catch (const CatalogFailure& failure) {
        RaiseWithText<ZORMsgError>(failure.what(), kFile, __LINE__);
    }
    if (!text)
        RaiseWithText<ZORMsgError>("message catalog " + Text(_Name) + ": " +
                                       (exists ? "there is no text for " + Text(iKey)
                                               : "not found (asked for " + Text(iKey) + ")"),
                                   kFile, __LINE__);
    if (auto* const message = new ZORMsg(ZORUnicodeString(*text)))
        return message;
    throw std::bad_alloc();
}
