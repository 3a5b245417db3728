#pragma once

#include "ZORSettingRepository.h"
#include "ZORString.h"
#include "ZORUnicodeString.h"

#include <memory>

// Reads settings of one file, at which it looks when the first is asked for: all are of one state
// of the file. Traces and tells errors as ZORDuxServices::GetSetting, which each reading is.
class SettingReader
{
public:
    // Keeps the file's name by reference.
    explicit SettingReader(const ZORUnicodeString& iFileName) : _FileName(iFileName) {}

    // The value of that setting; empty when there is none.
    ZORUnicodeString Get(const ZORUnicodeString& iVariableName);

private:
    const ZORUnicodeString& _FileName;
    std::unique_ptr<ZORSettingRepository> _Repository;
    ZORString _Stored; // keeps its storage from one reading to the next
};
