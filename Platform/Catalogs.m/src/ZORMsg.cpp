#include "ZORMsg.h"

#include "MessagePlaces.h"

#include <algorithm>
#include <utility>

ZOR_IMPLEMENT_CLASS(ZORMsg, ZORKindImplementation, ZORBaseUnknown)

namespace
{

constexpr int kGreatestPlace = 99;

std::string_view ViewOf(const ZORUnicodeString& iText)
{
    return {iText.ConvertToChar(), iText.GetLengthInBytes()};
}

} // namespace

ZORMsg::ZORMsg(const ZORUnicodeString& iText) : _Text(iText) {}

ZORMsg::ZORMsg(ZORUnicodeString&& iText) : _Text(std::move(iText)) {}

ZORMsg::~ZORMsg() = default;

const ZORUnicodeString& ZORMsg::GetText() const
{
    return _Text;
}

int ZORMsg::GetNbParameters() const
{
    return GreatestPlace(ViewOf(_Text));
}

ZORUnicodeString ZORMsg::BuildMessage(const ZORUnicodeString* iParameters) const
{
    return BuildMessage(iParameters, kGreatestPlace); // it asks for no more than the text has
}

ZORUnicodeString ZORMsg::BuildMessage(const ZORUnicodeString* iParameters, int iCount) const
{
    const auto count = static_cast<std::size_t>(iParameters ? std::max(iCount, 0) : 0);
    return ZORUnicodeString(
        FillPlaces(ViewOf(_Text), count, [&](std::size_t i) { return ViewOf(iParameters[i]); }));
}
