#pragma once

#include "ZORDuxServices.h"
#include "ZORTie.h"

// Shows ZORIDuxServices on a ZORDuxServices.
class TIEZORIDuxServicesZORDuxServices final : public ZORIDuxServices
{
    ZOR_DECLARE_TIE(ZORIDuxServices, ZORDuxServices)
public:
    ZORUnicodeString SeekFile(const ZORUnicodeString& iFileName,
                              const ZORUnicodeString& iPath) override;
    ZORDuxFileAccess CheckFile(const ZORUnicodeString& iFullPath) override;
    void LoadSchema(const ZORUnicodeString& iSchemaName) override;
    ZORUnicodeString GetSettingSeparator() override;
    void PutSettingSeparator(const ZORUnicodeString& iSeparator) override;
    ZORUnicodeString GetSetting(const ZORUnicodeString& iVariableName,
                                const ZORUnicodeString& iFileName) override;
    void PutSetting(const ZORUnicodeString& iSettingName, const ZORUnicodeString& iSettingValue,
                    const ZORUnicodeString& iFileName) override;
    void RemoveSetting(const ZORUnicodeString& iSettingName,
                       const ZORUnicodeString& iFileName) override;
    ZORListValZORUnicodeString ListOfSettingVariables(const ZORUnicodeString& iFileName) override;
    ZORUnicodeString SearchPath(const ZORUnicodeString& iFileName) override;
    ZORListValZORUnicodeString SeekPath(const ZORUnicodeString& iFullPath) override;
    ZORListValZORUnicodeString GetEnv(const ZORUnicodeString& iEnvType) override;
    _SEQUENCE_octet GetOctetIdentifier() override;
    ZORUnicodeString GetIdentifier() override;
    ZORListValZORUnicodeString GetDynamicObjList(const ZORUnicodeString& iInterfaceName) override;
    ZORIContainer_var CreateSimpleContainer(const ZORUnicodeString& iModelType,
                                            const ZORUnicodeString& iTheSchemaName) override;
    int WriteStream(const ZORListValZORUnicodeString& iLines,
                    const ZORUnicodeString& iFileName) override;
    ZORListValZORUnicodeString ReadStream(const ZORUnicodeString& iFileName) override;
    ZORUnicodeString SeekEnv(const ZORUnicodeString& iPath) override;
};

// A new adapter on a ZORDuxServices, for the dictionary.
ZORBaseUnknown* CreateTIEZORIDuxServicesZORDuxServices(ZORBaseUnknown* iObject);
