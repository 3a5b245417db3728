#include "ZORMsg.h"

#include "MessagePlaces.h"

ZOR_IMPLEMENT_CLASS(ZORMsg, ZORKindImplementation, ZORBaseUnknown)

namespace
{

std::string_view ViewOf(const ZORUnicodeString& iText)
{
    return {iText.ConvertToChar(), iText.GetLengthInBytes()};
}

} // namespace

ZORMsg::ZORMsg(const ZORUnicodeString& iText) : _Text(iText) {}

ZORMsg::~ZORMsg() = default;

const ZORUnicodeString& ZORMsg::GetText() const
{
    return _Text;
}

int ZORMsg::GetNbParameters() const
{
    const std::set<int> places = PlacesIn(ViewOf(_Text));
    return places.empty() ? 0 : *places.rbegin();
}

ZORUnicodeString ZORMsg::BuildMessage(const ZORUnicodeString* iParameters) const
{
    return BuildMessage(iParameters, GetNbParameters());
}

ZORUnicodeString ZORMsg::BuildMessage(const ZORUnicodeString* iParameters, int iCount) const
{
    std::vector<std::string_view> parameters;
    for (int i = 0; iParameters && i < iCount; ++i)
        parameters.push_back(ViewOf(iParameters[i]));
    return ZORUnicodeString(FillPlaces(ViewOf(_Text), parameters));
}
