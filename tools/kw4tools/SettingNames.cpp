#include "SettingNames.h"

#include "ToldErrors.h"
#include "ZORSettingRepository.h"

#include <memory>

namespace
{

bool Has(const std::string& iFile, const std::string& iName)
{
    constexpr int kNameSize = 200; // bytes of an attribute name, its NUL included
    const std::unique_ptr<ZORSettingRepository> repository(
        ZORSettingRepository::GetRepository(iFile.c_str()));
    char name[kNameSize];
    while (repository->NextAttribute(name, nullptr, nullptr, 0) != -1)
        if (iName == name)
            return true;
    return false;
}

} // namespace

bool HasSetting(const std::string& iFile, const std::string& iName)
{
    return TellingErrors([&] { return Has(iFile, iName); });
}
