#include "TIEZORIDuxServicesZORDuxServices.h"

ZOR_IMPLEMENT_TIE(ZORIDuxServices, ZORDuxServices, ZORKindTie)

ZORUnicodeString TIEZORIDuxServicesZORDuxServices::SeekFile(const ZORUnicodeString& iFileName,
                                                            const ZORUnicodeString& iPath)
{
    return Self()->SeekFile(iFileName, iPath);
}

ZORDuxFileAccess TIEZORIDuxServicesZORDuxServices::CheckFile(const ZORUnicodeString& iFullPath)
{
    return Self()->CheckFile(iFullPath);
}

void TIEZORIDuxServicesZORDuxServices::LoadSchema(const ZORUnicodeString& iSchemaName)
{
    Self()->LoadSchema(iSchemaName);
}

ZORUnicodeString TIEZORIDuxServicesZORDuxServices::GetSettingSeparator()
{
    return Self()->GetSettingSeparator();
}

void TIEZORIDuxServicesZORDuxServices::PutSettingSeparator(const ZORUnicodeString& iSeparator)
{
    Self()->PutSettingSeparator(iSeparator);
}

ZORUnicodeString TIEZORIDuxServicesZORDuxServices::GetSetting(const ZORUnicodeString& iVariableName,
                                                              const ZORUnicodeString& iFileName)
{
    return Self()->GetSetting(iVariableName, iFileName);
}

void TIEZORIDuxServicesZORDuxServices::PutSetting(const ZORUnicodeString& iSettingName,
                                                  const ZORUnicodeString& iSettingValue,
                                                  const ZORUnicodeString& iFileName)
{
    Self()->PutSetting(iSettingName, iSettingValue, iFileName);
}

void TIEZORIDuxServicesZORDuxServices::RemoveSetting(const ZORUnicodeString& iSettingName,
                                                     const ZORUnicodeString& iFileName)
{
    Self()->RemoveSetting(iSettingName, iFileName);
}

ZORListValZORUnicodeString
TIEZORIDuxServicesZORDuxServices::ListOfSettingVariables(const ZORUnicodeString& iFileName)
{
    return Self()->ListOfSettingVariables(iFileName);
}

ZORUnicodeString TIEZORIDuxServicesZORDuxServices::SearchPath(const ZORUnicodeString& iFileName)
{
    return Self()->SearchPath(iFileName);
}

ZORListValZORUnicodeString
TIEZORIDuxServicesZORDuxServices::SeekPath(const ZORUnicodeString& iFullPath)
{
    return Self()->SeekPath(iFullPath);
}

ZORListValZORUnicodeString
TIEZORIDuxServicesZORDuxServices::GetEnv(const ZORUnicodeString& iEnvType)
{
    return Self()->GetEnv(iEnvType);
}

_SEQUENCE_octet TIEZORIDuxServicesZORDuxServices::GetOctetIdentifier()
{
    return Self()->GetOctetIdentifier();
}

ZORUnicodeString TIEZORIDuxServicesZORDuxServices::GetIdentifier()
{
    return Self()->GetIdentifier();
}

ZORListValZORUnicodeString
TIEZORIDuxServicesZORDuxServices::GetDynamicObjList(const ZORUnicodeString& iInterfaceName)
{
    return Self()->GetDynamicObjList(iInterfaceName);
}

ZORIContainer_var
TIEZORIDuxServicesZORDuxServices::CreateSimpleContainer(const ZORUnicodeString& iModelType,
                                                        const ZORUnicodeString& iTheSchemaName)
{
    return Self()->CreateSimpleContainer(iModelType, iTheSchemaName);
}

int TIEZORIDuxServicesZORDuxServices::WriteStream(const ZORListValZORUnicodeString& iLines,
                                                  const ZORUnicodeString& iFileName)
{
    return Self()->WriteStream(iLines, iFileName);
}

ZORListValZORUnicodeString
TIEZORIDuxServicesZORDuxServices::ReadStream(const ZORUnicodeString& iFileName)
{
    return Self()->ReadStream(iFileName);
}

ZORUnicodeString TIEZORIDuxServicesZORDuxServices::SeekEnv(const ZORUnicodeString& iPath)
{
    return Self()->SeekEnv(iPath);
}
