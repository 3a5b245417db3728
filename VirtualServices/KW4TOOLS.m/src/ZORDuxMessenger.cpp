#include "ZORDuxMessenger.h"

#include "ZORHandle.h"
#include "ZORMsg.h"
#include "ZORMsgCatalog.h"

#include <atomic>
#include <charconv>
#include <new>

ZORDuxMessenger* ZORDuxMessenger::_TheMessenger = nullptr;

namespace
{

enum MessageClass : int {
    kNothing = 0,
    kInformation = 1,
    kWarning = 2,
    kError = -1,
};

constexpr int kFamilyLength = 3; // of the family, and of the class marker behind it

struct Family {
    const char* name;
    const char* catalog;
};

constexpr Family kFamilies[] = {
    {"CDA", "ZORDUXCdaErrorMsg"},
    {"PS_", "ZORDUXPS_ErrorMsg"},
    {"CFG", "ZORDUXCfgErrorMsg"},
    {"PNO", "ZORDUXPnoErrorMsg"},
};

int ClassOf(const ZORUnicodeString& iTag)
{
    const ZORUnicodeString marker = iTag.SubString(kFamilyLength, kFamilyLength);
    if (marker == "_W_")
        return kWarning;
    return marker == "_I_" ? kInformation : kError;
}

// Null for a tag of no family.
const char* CatalogOf(const ZORUnicodeString& iTag)
{
    const ZORUnicodeString name = iTag.SubString(0, kFamilyLength);
    for (const Family& family : kFamilies)
        if (name == family.name)
            return family.catalog;
    return nullptr;
}

ZORUnicodeString Build(const ZORMsg& iMessage, const ZORListValZORUnicodeString& iParameters)
{
    return iMessage.BuildMessage(iParameters.begin(), iParameters.Size());
}

} // namespace

ZORDuxMessenger* GetDuxMessenger()
{
    const std::atomic_ref<ZORDuxMessenger*> shared(ZORDuxMessenger::_TheMessenger);
    ZORDuxMessenger* present = shared.load(std::memory_order_acquire);
    if (present)
        return present;
    auto* const made = new ZORDuxMessenger;
    if (shared.compare_exchange_strong(present, made))
        return made;
    delete made; // another thread was faster
    return present;
}

ZORDuxMessenger::ZORDuxMessenger() : _Loaded(0), _Ier(kNothing) {}

ZORDuxMessenger::~ZORDuxMessenger() = default;

void ZORDuxMessenger::Reset()
{
    _Loaded = 0;
    _Ier = kNothing;
    _Tag = "";
    _ShortMsg = "";
    _LongMsg = "";
    _Params.RemoveAll();
}

void ZORDuxMessenger::Set(const ZORUnicodeString& iTag)
{
    Reset();
    _Tag = iTag;
    _Ier = ClassOf(iTag);
}

void ZORDuxMessenger::Set(const ZORUnicodeString& iShortMsg, const ZORUnicodeString& iLongMsg)
{
    _ShortMsg = iShortMsg;
    _LongMsg = iLongMsg;
    _Loaded = 1;
    _Ier = kError;
}

void ZORDuxMessenger::Add(const ZORUnicodeString& iText)
{
    _Params.Append(iText);
}

void ZORDuxMessenger::Add(const int iNumber)
{
    constexpr int kDigits = 6; // of printf's "%g"
    char text[32];
    const std::to_chars_result end =
        std::to_chars(text, text + sizeof text, static_cast<double>(iNumber),
                      std::chars_format::general, kDigits);
    _Params.Append(ZORUnicodeString(text, static_cast<std::size_t>(end.ptr - text)));
}

void ZORDuxMessenger::Add(const double& /*iNumber*/) {}

void ZORDuxMessenger::GetShortMsg(ZORUnicodeString& oText)
{
    LoadMessage();
    oText = _ShortMsg;
}

void ZORDuxMessenger::GetLongMsg(ZORUnicodeString& oText)
{
    LoadMessage();
    oText = _LongMsg;
}

int ZORDuxMessenger::Ier() const
{
    return _Ier;
}

void ZORDuxMessenger::LoadMessage()
{
    if (_Loaded)
        return;
    _Loaded = 1;
    const char* const name = CatalogOf(_Tag);
    if (!name) {
        _Ier = kError;
        _ShortMsg = "DUX ERROR";
        _LongMsg = "Cannot find a valid message file for tag : " + _Tag;
        return;
    }
    const auto catalog = ZORHandle<ZORMsgCatalog>::Adopt(new ZORMsgCatalog(name));
    if (!catalog)
        throw std::bad_alloc();
    const auto shortMsg = ZORHandle<ZORMsg>::Adopt(catalog->GetMsg(_Tag + ".Short"));
    const auto longMsg = ZORHandle<ZORMsg>::Adopt(catalog->GetMsg(_Tag + ".Long"));
    _ShortMsg = Build(*shortMsg, _Params);
    _LongMsg = Build(*longMsg, _Params);
}
