// The settings operations of the services.

#include "MethodFrame.h"
#include "ServicesErrors.h"
#include "SettingReader.h"
#include "ZORDuxServices.h"
#include "ZORSettingRepository.h"
#include "ZORString.h"

#include <memory>

namespace
{

constexpr long kItems = 2;     // a stored setting is the pair (name, value)
constexpr int kNameSize = 200; // bytes of an attribute name, its NUL included
using Repository = std::unique_ptr<ZORSettingRepository>;

Repository Open(const ZORUnicodeString& iFileName)
{
    return Repository(ZORSettingRepository::GetRepository(iFileName.ConvertToChar()));
}

// The pair of items that the repository reads into and writes from.
struct StoredSetting {
    ZORString name;
    ZORString value;

    void Read(ZORSettingRepository& iRepository, const char* iAttribute)
    {
        ZORBaseUnknown* items[kItems] = {&name, &value};
        iRepository.ReadSetting(iAttribute, items, kItems);
    }
    void Write(ZORSettingRepository& ioRepository, const char* iAttribute)
    {
        ZORBaseUnknown* items[kItems] = {&name, &value};
        ioRepository.WriteSetting(iAttribute, items, kItems);
    }
};

// The attributes of a repository one after the other.
class Attributes
{
public:
    explicit Attributes(ZORSettingRepository& iRepository) : _Repository(iRepository) {}

    // The next attribute's name, or null.
    const char* Next()
    {
        return _Repository.NextAttribute(_Name, nullptr, nullptr, 0) == -1 ? nullptr : _Name;
    }

private:
    ZORSettingRepository& _Repository;
    char _Name[kNameSize];
};

} // namespace

ZORUnicodeString ZORDuxServices::GetSettingSeparator()
{
    MethodFrame frame("ZORDuxServices::GetSettingSeparator");
    frame.Value("_TheSettingSeparator", _TheSettingSeparator);
    return _TheSettingSeparator;
}

void ZORDuxServices::PutSettingSeparator(const ZORUnicodeString& iSeparator)
{
    MethodFrame frame("ZORDuxServices::PutSettingSeparator");
    frame.Value("iSeparator", iSeparator);
    _TheSettingSeparator = iSeparator;
}

ZORUnicodeString ZORDuxServices::GetSetting(const ZORUnicodeString& iVariableName,
                                            const ZORUnicodeString& iFileName)
{
    return SettingReader(iFileName).Get(iVariableName);
}

void ZORDuxServices::PutSetting(const ZORUnicodeString& iSettingName,
                                const ZORUnicodeString& iSettingValue,
                                const ZORUnicodeString& iFileName)
{
    constexpr int kFileNameEmpty = 929;
    MethodFrame frame("ZORDuxServices::PutSetting");
    frame.Value("iSettingName", iSettingName);
    frame.Value("iSettingValue", iSettingValue);
    frame.Value("iFileName", iFileName);
    Guarded(ErrorReport::Short, [&] {
        if (iFileName.IsEmpty()) {
            frame.Note("FileName is NULL");
            RaiseArgumentError(kFileNameEmpty);
        }
        const Repository repository = Open(iFileName);
        StoredSetting setting{ZORString(iSettingName), ZORString(iSettingValue)};
        setting.Write(*repository, iSettingName.ConvertToChar());
        repository->SaveRepository();
        frame.Note("OK");
    });
}

void ZORDuxServices::RemoveSetting(const ZORUnicodeString& iSettingName,
                                   const ZORUnicodeString& iFileName)
{
    constexpr int kFileNameEmpty = 1022;
    MethodFrame frame("ZORDuxServices::RemoveSetting");
    frame.Value("iSettingName", iSettingName);
    frame.Value("iFileName", iFileName);
    Guarded(ErrorReport::Short, [&] {
        if (iFileName.IsEmpty())
            RaiseArgumentError(kFileNameEmpty);
        const Repository repository = Open(iFileName);
        Attributes attributes(*repository);
        StoredSetting setting;
        // An attribute that somebody else removed since leaves the items as they are: as no match.
        ZORString noMatch(iSettingName);
        noMatch.Append("?");
        while (const char* const attribute = attributes.Next()) {
            setting.name = noMatch;
            setting.Read(*repository, attribute);
            if (setting.name == iSettingName.ConvertToChar()) {
                repository->DelAttribute(attribute);
                repository->SaveRepository();
            }
        }
    });
}

ZORListValZORUnicodeString ZORDuxServices::ListOfSettingVariables(const ZORUnicodeString& iFileName)
{
    constexpr int kFileNameEmpty = 528;
    MethodFrame frame("ZORDuxServices::ListOfSettingVariables");
    frame.Value("iFileName", iFileName);
    return Guarded(ErrorReport::Short, [&] {
        if (iFileName.IsEmpty()) {
            frame.Note("FileName is NULL");
            RaiseArgumentError(kFileNameEmpty);
        }
        const Repository repository = Open(iFileName);
        Attributes attributes(*repository);
        ZORListValZORUnicodeString names;
        ZORString stored;
        ZORBaseUnknown* items[kItems] = {&stored, nullptr};
        while (const char* const attribute = attributes.Next()) {
            repository->ReadSetting(attribute, items, kItems);
            ZORUnicodeString name(stored.ConvertToChar());
            frame.Value("Name", name);
            names.Append(std::move(name));
        }
        return names;
    });
}
