#pragma once

#include "ZORInternalError.h"

// The failures of the common services.
//
//     auto* error = new ZORDuxServicesMsg(0x20003);
//     error->SetParameters(1, "libAP214.so");
//     error->Throw(__FILE__, __LINE__);
//
// | identifier | parameters                  | meaning                                         |
// |------------|-----------------------------|-------------------------------------------------|
// | 0x20002    | component, interface        | the component does not offer the interface      |
// | 0x20003    | library file                | the schema library is not found or not loadable |
// | 0x20004    | library file, function name | the schema library has no creation function     |
//
// The texts are in English here; the catalog "ZORDuxServicesMsg" has them in the user's language
// (see ZORError::GetMessage).
//
// Thread rule: one thread at a time.
class ZOR_EXPORT ZORDuxServicesMsg : public ZORInternalError
{
    ZOR_DECLARE_CLASS
public:
    // An error with that identifier; one that is not in the table has no text but that of SetText.
    // Its parameters come with SetParameters.
    explicit ZORDuxServicesMsg(unsigned int iId = 0);
    // Copies identifier, parameters, text and history.
    ZORDuxServicesMsg(const ZORDuxServicesMsg& iOther);
    ~ZORDuxServicesMsg() override;

    // A new error that copies this one, with one reference, the caller's; null when there is no
    // memory.
    ZORError* CloneSelf() override;
    // The English texts of the table above: *oCount of them from *oTable on, static.
    // REQUIRES: neither argument is null.
    void GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable) override;
};
