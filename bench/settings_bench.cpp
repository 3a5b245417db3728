// Settings kept in a file: the services, the least that the system has to do for it, and the
// classes that one would use instead (settings_*.cpp). Each call sees what others did to the file.

#include "CreateServices.h"
#include "ScopedEnvironment.h"
#include "settings_rows.h"

#include <fstream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>

namespace
{

std::string TextOf(const Settings& iSettings)
{
    std::string text;
    for (std::size_t i = 0; i < iSettings.names.size(); ++i)
        text += iSettings.names[i] + " = \"" + iSettings.values[i] + "\"\n";
    return text;
}

void WriteText(const std::string& iPath, const Settings& iSettings)
{
    std::ofstream(iPath, std::ios::binary) << TextOf(iSettings);
}

class Ours
{
public:
    using Text = ZORUnicodeString;
    static constexpr bool kSyncs = true;
    static constexpr auto Write = WriteText;

    explicit Ours(const std::string& iPath)
        : _Directories("ZOR_SETTINGS_PATH", std::filesystem::path(iPath).parent_path().string())
    {
    }
    Text Get(const Text& iName) { return _Services->GetSetting(iName, _File); }
    ZORListValZORUnicodeString List() { return _Services->ListOfSettingVariables(_File); }
    void Put(const Text& iName, const Text& iValue) { _Services->PutSetting(iName, iValue, _File); }

private:
    const ScopedEnvironment _Directories;
    ZORIDuxServices_var _Services = CreateServices();
    const Text _File = "site";
};

std::string Bytes(const std::string& iPath)
{
    const int file = open(iPath.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status;
    fstat(file, &status);
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    if (read(file, bytes.data(), bytes.size()) != status.st_size)
        bytes.clear();
    close(file);
    return bytes;
}

// Understands nothing but what WriteText writes.
class Reference
{
public:
    using Text = std::string;
    static constexpr bool kSyncs = true;
    static constexpr auto Write = WriteText;

    explicit Reference(const std::string& iPath)
        : _Path(iPath), _Directory(std::filesystem::path(iPath).parent_path())
    {
        Load();
    }

    // One look at the file, and at a table while that is the same; else at its text.
    Text Get(const Text& iName)
    {
        struct stat status;
        stat(_Path.c_str(), &status);
        if (status.st_ino == _Status.st_ino && status.st_size == _Status.st_size &&
            status.st_mtim.tv_sec == _Status.st_mtim.tv_sec &&
            status.st_mtim.tv_nsec == _Status.st_mtim.tv_nsec)
            return _Values.find(iName)->second;
        const std::string bytes = Bytes(_Path);
        const std::size_t begin = bytes.find('\n' + iName + " = \"") + iName.size() + 5;
        return bytes.substr(begin, bytes.find('"', begin) - begin);
    }

    std::vector<Text> List()
    {
        const std::string bytes = Bytes(_Path);
        std::vector<Text> names;
        for (std::size_t begin = 0; begin < bytes.size(); begin = bytes.find('\n', begin) + 1)
            names.push_back(bytes.substr(begin, bytes.find(' ', begin) - begin));
        return names;
    }

    // The text is ready: what is left is to bring it to the disk, and never half of it.
    void Put(const Text& iName, const Text& iValue)
    {
        std::string& text = _Texts[iValue];
        if (text.empty())
            text = TextWith(iName, iValue);
        const std::string temporary = _Path + ".tmp";
        const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        const bool written = write(file, text.data(), text.size()) != -1 && fsync(file) == 0;
        close(file);
        if (written)
            rename(temporary.c_str(), _Path.c_str());
        const int directory = open(_Directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        fsync(directory);
        close(directory);
    }

private:
    void Load()
    {
        stat(_Path.c_str(), &_Status);
        _Text = Bytes(_Path);
        for (const Text& name : List()) {
            const std::size_t begin = _Text.find(name + " = \"") + name.size() + 4;
            _Values[name] = _Text.substr(begin, _Text.find('"', begin) - begin);
        }
    }
    std::string TextWith(const Text& iName, const Text& iValue) const
    {
        std::string text = _Text;
        const std::size_t begin = text.find('\n' + iName + " = \"") + iName.size() + 5;
        return text.replace(begin, text.find('"', begin) - begin, iValue);
    }

    const std::string _Path;
    const std::string _Directory;
    struct stat _Status;
    std::string _Text;
    std::unordered_map<Text, Text> _Values;
    std::unordered_map<Text, Text> _Texts; // by the value put
};

const Rows kRows([] {
    SettingsRows<Ours>("ours");
    SettingsRows<Reference>("reference");
});

} // namespace
