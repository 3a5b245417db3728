#pragma once

#include "ZORInternalError.h"

// What the settings repository raises. Its text names the settings file and the step that failed
// with the system's words, or line and column of the damage:
//
//     settings file /home/ann/.config/zor/site.toml: cannot open it: Permission denied
//     settings file ./site.toml: line 3, column 8: encountered end-of-file
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORSettingError : public ZORInternalError
{
    ZOR_DECLARE_CLASS
public:
    // An error with identifier 0 and no text yet.
    ZORSettingError();
    // Copies text and history.
    ZORSettingError(const ZORSettingError& iOther);
    ~ZORSettingError() override;

    // A new error that copies this one, with one reference, the caller's; null when there is no
    // memory.
    ZORError* CloneSelf() override;
};
