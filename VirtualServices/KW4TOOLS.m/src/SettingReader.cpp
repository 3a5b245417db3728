#include "SettingReader.h"

#include "MethodFrame.h"
#include "ServicesErrors.h"

#include <iterator>

ZORUnicodeString SettingReader::Get(const ZORUnicodeString& iVariableName)
{
    constexpr int kFileNameEmpty = 801;
    constexpr int kVariableNameEmpty = 814;
    MethodFrame frame("ZORDuxServices::GetSetting");
    frame.Value("iVariableName", iVariableName);
    frame.Value("iFileName", _FileName);
    return Guarded(ErrorReport::Long, [&] {
        if (_FileName.IsEmpty()) {
            frame.Note("FileName is NULL");
            RaiseArgumentError(kFileNameEmpty);
        }
        if (!_Repository)
            _Repository.reset(ZORSettingRepository::GetRepository(_FileName.ConvertToChar()));
        if (iVariableName.IsEmpty()) {
            frame.Note("VariableName is NULL");
            RaiseArgumentError(kVariableNameEmpty);
        }
        ZORBaseUnknown* items[] = {nullptr, &_Stored}; // the name, the value
        _Stored = "";
        _Repository->ReadSetting(iVariableName.ConvertToChar(), items, std::ssize(items));
        ZORUnicodeString value(_Stored.ConvertToChar());
        frame.Value("retour", value);
        return value;
    });
}
