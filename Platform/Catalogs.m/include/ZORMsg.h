#pragma once

#include "ZORClass.h"
#include "ZORUnicodeString.h"

// A message of a catalog: a text with places for parameters.
//
//     ZORMsg* message = catalog->GetMsg("CDA_E_0001.Short");   // "Part {1} is locked by {2}."
//     const ZORUnicodeString parameters[] = {"plate", "ann"};
//     std::puts(message->BuildMessage(parameters).ConvertToChar());
//     message->Release();
//
// Places are {1} to {99}, in any order and as often as one likes; {{ stands for a brace; any other
// brace is text.
//
// Thread rule: several threads may read one message.
class ZOR_EXPORT ZORMsg : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // A message of that text, which is copied.
    explicit ZORMsg(const ZORUnicodeString& iText);
    // The same, taking the text over.
    explicit ZORMsg(ZORUnicodeString&& iText);
    ~ZORMsg() override;

    // The text as the catalog has it.
    const ZORUnicodeString& GetText() const;
    // How many parameters the message takes: the greatest number of its places, 0 when it has none.
    int GetNbParameters() const;

    // The text with the parameters in its places: the first in {1}, and so on. A null array gives
    // none. A place whose parameter is not given stays visible as it is written; what a parameter
    // holds is never expanded.
    // REQUIRES: the array holds GetNbParameters() strings.
    ZORUnicodeString BuildMessage(const ZORUnicodeString* iParameters) const;
    // The same for an array of any length: of `iCount` strings (negative counts as 0).
    ZORUnicodeString BuildMessage(const ZORUnicodeString* iParameters, int iCount) const;

private:
    ZORUnicodeString _Text;
};
