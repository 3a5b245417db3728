#include "ZORRaisedError.h"

#include <utility>

ZORRaisedError::ZORRaisedError(ZORError* iError) : _Error(iError)
{
    if (!std::exchange(iError->_Raised, true))
        iError->Release();
}

ZORRaisedError::ZORRaisedError(const ZORRaisedError& iOther) noexcept
    : std::exception(iOther), _Error(iOther._Error)
{
}

ZORRaisedError::~ZORRaisedError() = default;

const char* ZORRaisedError::what() const noexcept
{
    try {
        if (_What.IsEmpty())
            _What = _Error->GetMessage(1);
        return _What.ConvertToChar();
    } catch (...) { // no memory for the text
        return _Error->IsA();
    }
}
