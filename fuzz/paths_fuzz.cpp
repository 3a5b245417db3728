// The search path, path lists and variables in them, with settings and environment from the input:
// nothing hangs or overflows, and what is all ASCII agrees with a plain model. An input is a
// separator, a file name, a path list, the setting DUX_SEARCH_PATH, and then settings and
// variables: a byte that tells which, a name and a value.
#include "FuzzInput.h"
#include "ScopedEnvironment.h"
#include "SettingsSite.h"
#include "TomlQuoted.h"
#include "ZORDuxServices.h"
#include "ZORRaisedError.h"

#include <list>
#include <map>
#include <unistd.h>
#include <vector>

namespace
{

constexpr std::size_t kLargest = 1 << 15;
const char kRaised[] = "an error";

using Strings = std::vector<std::string>;

// What the operations are to see.
struct World {
    std::string separator;
    std::string file;
    std::string list;
    std::map<std::string, std::string> settings;
    std::map<std::string, std::string> variables;

    bool IsAllAscii() const
    {
        bool ascii = IsAscii(separator) && IsAscii(file) && IsAscii(list);
        for (const auto* const texts : {&settings, &variables})
            for (const auto& [name, value] : *texts)
                ascii = ascii && IsAscii(name) && IsAscii(value);
        return ascii;
    }
};

// Short names only: those that this process itself needs are longer.
bool IsVariable(const std::string& iName)
{
    return !iName.empty() && iName.size() < 12 && iName.find('=') == std::string::npos;
}

World ReadWorld(FuzzInput& ioInput)
{
    constexpr std::size_t kLongestSettingName = 199;
    World world;
    world.separator = ioInput.Text();
    world.file = ioInput.Text();
    world.list = ioInput.Text();
    world.settings["DUX_SEARCH_PATH"] = ioInput.Text();
    while (!ioInput.IsEmpty()) {
        const bool setting = ioInput.Byte() % 2 == 0;
        const std::string name = ioInput.Text();
        const std::string value = ioInput.Text();
        if (setting && name.size() <= kLongestSettingName)
            world.settings.emplace(name, value);
        else if (!setting && IsVariable(name))
            world.variables[name] = value;
    }
    return world;
}

// The operations by their definition.
class Model
{
public:
    explicit Model(const World& iWorld) : _World(iWorld) {}

    Strings Pieces(const std::string& iList) const
    {
        Strings pieces;
        std::string piece;
        for (const char each : iList) {
            if (_World.separator.find(each) == std::string::npos) {
                piece += each;
                continue;
            }
            if (!piece.empty())
                pieces.push_back(piece);
            piece.clear();
        }
        if (!piece.empty())
            pieces.push_back(piece);
        return pieces;
    }

    Strings SeekPath(const std::string& iList) const
    {
        Strings directories = Pieces(iList);
        for (std::string& each : directories) {
            each.erase(0, std::min(each.find_first_not_of(' '), each.size()));
            each.erase(each.find_last_not_of(' ') + 1);
        }
        return directories;
    }

    Strings GetEnv(const std::string& iName) const
    {
        Strings directories = SeekPath(Variable(iName));
        std::erase(directories, "");
        return directories;
    }

    std::string SeekEnv(std::string iPath) const
    {
        const std::size_t dollar = iPath.find('$');
        if (dollar == std::string::npos)
            return iPath;
        const std::string behind = iPath.substr(dollar + 1);
        const std::string name = behind.substr(0, behind.find('/'));
        const std::string value = Variable(name);
        if (value.empty())
            return iPath;
        iPath.replace(iPath.find(name), name.size(), value);
        iPath.erase(iPath.find('$'), 1);
        if (const std::size_t slashes = iPath.find("//"); slashes != std::string::npos)
            iPath.erase(slashes, 1);
        return iPath;
    }

    std::string SeekFile(const std::string& iName, const std::string& iList) const
    {
        for (const std::string& each : Pieces(iList))
            if (const std::string path = each + "/" + iName; access(path.c_str(), F_OK) == 0)
                return path;
        return "";
    }

    std::string SearchPath(const std::string& iName) const
    {
        const std::size_t slash = iName.rfind('/');
        const bool relative = slash == std::string::npos;
        const std::string directory = relative ? "" : iName.substr(0, slash);
        const std::string base = relative ? iName : iName.substr(slash + 1);
        std::string list;
        for (const std::string& each : SeekPath(_World.settings.at("DUX_SEARCH_PATH"))) {
            if (each == "$$")
                return kRaised;
            list += SeekEnv(each.starts_with("$$") ? Setting(each.substr(2)) : each);
            list += _World.separator;
        }
        const std::string found = SeekFile(base, list);
        if (!found.empty())
            return found;
        const std::string beside = SeekFile(base, directory);
        if (!beside.empty() || base.empty())
            return beside;
        return access(base.c_str(), F_OK) == 0 ? base : "";
    }

private:
    std::string Setting(const std::string& iName) const
    {
        const auto found = _World.settings.find(iName);
        return found == _World.settings.end() ? "" : found->second;
    }
    static std::string Variable(const std::string& iName)
    {
        const char* const value = std::getenv(iName.c_str());
        return value ? value : "";
    }

    const World& _World;
};

std::string Searched(ZORDuxServices& ioServices, const std::string& iName)
{
    try {
        return ioServices.SearchPath(iName.c_str()).ConvertToChar();
    } catch (const ZORRaisedError&) {
        return kRaised;
    }
}

Strings Texts(const ZORListValZORUnicodeString& iList)
{
    Strings texts;
    for (const ZORUnicodeString& each : iList)
        texts.emplace_back(each.ConvertToChar());
    return texts;
}

std::string FirstVariable(const World& iWorld)
{
    return iWorld.variables.empty() ? "KW_UNSET" : iWorld.variables.begin()->first;
}

void Compare(ZORDuxServices& ioServices, const World& iWorld)
{
    const Model model(iWorld);
    const char* const list = iWorld.list.c_str();
    const std::string variable = FirstVariable(iWorld);
    const bool compare = iWorld.IsAllAscii();
    const Strings seekPath = Texts(ioServices.SeekPath(list));
    const Strings getEnv = Texts(ioServices.GetEnv(variable.c_str()));
    const ZORUnicodeString seekEnv = ioServices.SeekEnv(list);
    const ZORUnicodeString seekFile = ioServices.SeekFile(iWorld.file.c_str(), list);
    const std::string searched = Searched(ioServices, iWorld.file);
    if (!compare)
        return;
    Require(seekPath == model.SeekPath(iWorld.list));
    Require(getEnv == model.GetEnv(variable));
    RequireEqual(seekEnv.ConvertToChar(), model.SeekEnv(iWorld.list));
    RequireEqual(seekFile.ConvertToChar(), model.SeekFile(iWorld.file, iWorld.list));
    RequireEqual(searched, model.SearchPath(iWorld.file));
}

// Some directories with a file "f" to be found, and the settings.
class Site
{
public:
    Site()
    {
        for (const char* const each : {"f", "a/f", "b/g", "a/b/f", "$A/f", "$$A/g", " c/f"})
            _Directory.Write(each, "");
    }
    void WriteSettings(const World& iWorld) const
    {
        std::string text;
        for (const auto& [name, value] : iWorld.settings)
            text += TomlQuoted(name) + " = " + TomlQuoted(value) + "\n";
        _Settings.Write("DUXAdmin", text);
    }

private:
    ScopedDirectory _Directory;
    ScopedWorkingDirectory _Inside{_Directory.Path()};
    SettingsSite _Settings;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iBytes, std::size_t iSize)
{
    if (iSize > kLargest)
        return 0;
    static const Site site;
    FuzzInput input(iBytes, iSize);
    const World world = ReadWorld(input);
    site.WriteSettings(world);
    std::list<ScopedEnvironment> scopes;
    for (const auto& [name, value] : world.variables)
        scopes.emplace_back(name, value);
    ZORDuxServices services;
    services.PutSettingSeparator(world.separator.c_str());
    Compare(services, world);
    return 0;
}
