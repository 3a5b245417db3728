#pragma once

#include "ZORIDuxServices.h"

// The services component behind ZORIDuxServices, which documents the operations. Get it from
// CreateServices; the class is public for those who extend it.
//
//     ZORIDuxServices_var services = CreateServices();
//
// Thread rule: one thread at a time for one object.
class ZOR_EXPORT ZORDuxServices : public ZORBaseUnknown
{
    ZOR_DECLARE_CLASS
public:
    // The separator is ":".
    ZORDuxServices();
    // The separator of a copy is empty, whatever that of the source is: copies are filled by their
    // makers.
    ZORDuxServices(const ZORDuxServices& iOther);
    // Copies nothing: this object keeps its separator.
    ZORDuxServices& operator=(const ZORDuxServices& iOther);
    ~ZORDuxServices() override;

    // Null: only CreateServices makes services.
    static ZORBaseUnknown* CreateItself();

    // The operations of that name of ZORIDuxServices, which tells what they take, return and raise.
    ZORUnicodeString SeekFile(const ZORUnicodeString& iFileName, const ZORUnicodeString& iPath);
    ZORDuxFileAccess CheckFile(const ZORUnicodeString& iFullPath);
    void LoadSchema(const ZORUnicodeString& iSchemaName);
    ZORUnicodeString GetSettingSeparator();
    void PutSettingSeparator(const ZORUnicodeString& iSeparator);
    ZORUnicodeString GetSetting(const ZORUnicodeString& iVariableName,
                                const ZORUnicodeString& iFileName);
    void PutSetting(const ZORUnicodeString& iSettingName, const ZORUnicodeString& iSettingValue,
                    const ZORUnicodeString& iFileName);
    void RemoveSetting(const ZORUnicodeString& iSettingName, const ZORUnicodeString& iFileName);
    ZORListValZORUnicodeString ListOfSettingVariables(const ZORUnicodeString& iFileName);
    ZORUnicodeString SearchPath(const ZORUnicodeString& iFileName);
    ZORListValZORUnicodeString SeekPath(const ZORUnicodeString& iFullPath);
    ZORListValZORUnicodeString GetEnv(const ZORUnicodeString& iEnvType);
    _SEQUENCE_octet GetOctetIdentifier();
    ZORUnicodeString GetIdentifier();
    ZORListValZORUnicodeString GetDynamicObjList(const ZORUnicodeString& iInterfaceName);
    ZORIContainer_var CreateSimpleContainer(const ZORUnicodeString& iModelType,
                                            const ZORUnicodeString& iTheSchemaName);
    int WriteStream(const ZORListValZORUnicodeString& iLines, const ZORUnicodeString& iFileName);
    ZORListValZORUnicodeString ReadStream(const ZORUnicodeString& iFileName);
    ZORUnicodeString SeekEnv(const ZORUnicodeString& iPath);

    // Ends nothing: the last reference does.
    void remove();

private:
    ZORUnicodeString _TheSettingSeparator;
};
