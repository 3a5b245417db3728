#pragma once

#include "ZORError.h"
#include "ZORHandle.h"

#include <exception>

// The C++ exception behind ZORError::Throw: carries a counted handle to the very object that was
// raised.
//
//     try {
//         services->LoadSchema("AP214");
//     } catch (const ZORRaisedError& raised) {
//         std::cerr << raised.what() << '\n';
//         raised.Error().PrintHistory(std::cerr);
//     }
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORRaisedError final : public std::exception
{
public:
    // Throwing one of these directly raises an error without going through its Throw. Takes over
    // the creator's reference when the error was not raised before, as Throw does.
    // REQUIRES: `iError` is not null and was made with `new`.
    explicit ZORRaisedError(ZORError* iError);
    // Carries the same error.
    ZORRaisedError(const ZORRaisedError& iOther) noexcept;
    ZORRaisedError& operator=(const ZORRaisedError&) = delete;
    ~ZORRaisedError() override;

    // The error; valid as long as this exception, longer with an AddRef of one's own.
    ZORError& Error() const { return *_Error; }
    // The error's GetMessage(1); valid as long as this exception.
    const char* what() const noexcept override;

private:
    ZORHandle<ZORError> _Error;
    mutable ZORUnicodeString _What;
};
