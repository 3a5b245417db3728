#pragma once

#include "ZORInternalError.h"

// The failures of the common services.
//
// | identifier | parameters                  | meaning                                         |
// |------------|-----------------------------|-------------------------------------------------|
// | 0x20002    | component, interface        | the component does not offer the interface      |
// | 0x20003    | library file                | the schema library is not found or not loadable |
// | 0x20004    | library file, function name | the schema library has no creation function     |
class ZOR_EXPORT ZORDuxServicesMsg : public ZORInternalError
{
    ZOR_DECLARE_CLASS
public:
    explicit ZORDuxServicesMsg(unsigned int iId = 0);
    ZORDuxServicesMsg(const ZORDuxServicesMsg& iOther);
    ~ZORDuxServicesMsg() override;

    ZORError* CloneSelf() override;
    void GetErrorTable(unsigned int* oCount, const ZORErrDsc** oTable) override;
};
